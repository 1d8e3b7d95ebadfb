// EditedText: a text that the user writes with an editor.
#pragma once

#include <string>

namespace Host {

class EditedText {
 public:
  // Opens the editor in VISUAL or EDITOR, or vi, with an empty file in TMPDIR or /tmp, and waits for its end.
  // Raises a CommandError if the editor fails; what was typed is kept, and the error names the file.
  explicit EditedText(std::size_t largest);
  EditedText(const EditedText&) = delete;
  EditedText& operator=(const EditedText&) = delete;
  // Deletes the file.
  ~EditedText();

  // In bytes as the editor wrote them.
  const std::string& Bytes() const { return bytes_; }

  // The file isn't deleted; its path is printed on standard error. For a text that could not be stored.
  void Keep();

 private:
  std::string path_;
  std::string bytes_;
};

}  // namespace Host
