#include "siblings/TvGeneralServices/General.h"

#include <sys/utsname.h>

#include <fstream>
#include <map>
#include <string>

namespace TvGeneralServices {
namespace {

// The fields NAME=value of os-release(5); a value may be quoted.
std::map<std::string, std::string> ReadRelease() {
  std::map<std::string, std::string> fields;
  for (const char* file : {"/etc/os-release", "/usr/lib/os-release"}) {
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
      const auto equals = line.find('=');
      if (equals == std::string::npos || line.starts_with('#')) continue;
      std::string value = line.substr(equals + 1);
      const bool quoted =
          value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
      fields[line.substr(0, equals)] = quoted ? value.substr(1, value.size() - 2) : value;
    }
    if (!fields.empty()) break;
  }
  return fields;
}

}  // namespace

const General::Table& General::Members() {
  static const Table table = {Method(u"SystemInfo", 6, &General::SystemInfo)};
  return table;
}

Value General::SystemInfo(std::span<Value> arguments) {
  utsname system{};
  uname(&system);
  auto release = ReadRelease();
  const std::string texts[] = {release["PRETTY_NAME"], release["NAME"], release["VERSION_ID"],
                               system.release,         system.machine,  system.sysname};
  for (std::size_t i = 0; i < arguments.size(); ++i) arguments[i] = FromUtf8(texts[i]);
  return true;
}

}  // namespace TvGeneralServices
