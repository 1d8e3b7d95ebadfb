// RegistryFuzz: any path, name, type and content in the registry store, and what reads back.
//
// An input is lines: the path of a key, the name of a value, a digit for its type, and its content.
#include "fuzz/FuzzFiles.h"
#include "platform/Failure.h"
#include "runtime/RegistryStore.h"

namespace {

using namespace Platform;
using Runtime::RegistryStore;

constexpr Hive kHive = Hive::CurrentUser;

std::string_view NextLine(std::string_view& rest) {
  const std::string_view line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  return line;
}

void WriteAndRead(StringView path, StringView name, std::int32_t type, std::string_view content) {
  const Bytes bytes(content.begin(), content.end());
  const Value given = type == 3 ? Value(bytes) : Value(FromUtf8(content));
  Fuzz::Require(RegistryStore::Write(kHive, path, name, {type, given}));
  const auto read = RegistryStore::Read(kHive, FoldCase(path), FoldCase(name));
  Fuzz::Require(read && read->Type == type);
  if (type == 1) Fuzz::Require(read->Content.ToString() == given.ToString());
  if (type == 3) Fuzz::Require(read->Content.ToBytes() == bytes);
  if (type == 4) Fuzz::Require(read->Content.ToDouble() == given.ToDouble());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Fuzz::Home home;
  static const bool made = (RegistryStore::Create(kHive), true);
  std::string_view rest = Fuzz::TextOf(data, size);
  const String path = FromUtf8(NextLine(rest)), name = FromUtf8(NextLine(rest));
  const std::string_view type = NextLine(rest);
  try {
    RegistryStore::CreateKey(kHive, path);
  } catch (const Failure& failure) {
    Fuzz::Require(made && failure.Number() == FailureNumber::InvalidArgument);
    Fuzz::Require(!RegistryStore::KeyExists(kHive, path));
    return 0;
  }
  Fuzz::Require(RegistryStore::KeyExists(kHive, path));
  try {
    WriteAndRead(path, name, type.empty() ? 1 : type.front() - '0', rest);
  } catch (const Failure& failure) {
    // A type that doesn't exist, or a text that is no number.
    Fuzz::Require(failure.Number() != FailureNumber::DeviceFailed);
  }
  const String top(path.substr(0, path.find(u'\\')));
  Fuzz::Require(top.empty() ||
                (RegistryStore::DeleteKey(kHive, top) && !RegistryStore::KeyExists(kHive, path)));
  return 0;
}
