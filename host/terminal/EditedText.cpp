#include "host/terminal/EditedText.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "host/CommandError.h"
#include "platform/TerminalText.h"
#include "runtime/DurableFile.h"

namespace Host {

namespace {

namespace TextNumber = Platform::TextNumber;

std::string EditorCommand() {
  for (const char* name : {"VISUAL", "EDITOR"})
    if (const char* const editor = std::getenv(name); editor && *editor) return editor;
  return "vi";
}

}  // namespace

EditedText::EditedText(std::size_t largest) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  Runtime::StagedFile file(error ? "/tmp" : folder.string());
  file.Release();
  file.Keep();
  path_ = file.Path();
  // The shell splits the editor's arguments, and the path can hold any character.
  setenv("TVMAIL_TEXT", path_.c_str(), 1);
  const std::string editor = EditorCommand();
  if (std::system((editor + " \"$TVMAIL_TEXT\"").c_str()) != 0) {
    if (std::filesystem::file_size(path_, error) > 0 && !error) Keep();
    throw CommandError(Cancelled, TextNumber::kEditorFailed,
                       Platform::FromUtf8(Platform::TerminalLine(Platform::FromUtf8(editor))));
  }
  try {
    bytes_ = Runtime::ReadSmallFile(path_, largest).Content;
  } catch (...) {
    Keep();
    throw;
  }
}

EditedText::~EditedText() {
  if (!path_.empty()) unlink(path_.c_str());
}

void EditedText::Keep() {
  std::cerr << "tvmail: "
            << Platform::TerminalLine(Runtime::TextOf(TextNumber::kTextKept, Platform::FromUtf8(path_)))
            << '\n';
  path_.clear();
}

}  // namespace Host
