#include "gateway/sources/MaildirName.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>
#include <tuple>
#include <utility>

namespace Gateway {
namespace {

constexpr auto kNoNumber = std::numeric_limits<std::uint64_t>::max();

// The number at the beginning, with its digits removed.
std::uint64_t TakeNumber(std::string_view& text) {
  std::uint64_t number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end.ec != std::errc()) return kNoNumber;
  text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
  return number;
}

struct Arrival {
  std::uint64_t Second;
  std::uint64_t Microsecond;
  std::string Name;

  bool operator<(const Arrival& other) const {
    return std::tie(Second, Microsecond, Name) < std::tie(other.Second, other.Microsecond, other.Name);
  }
};

Arrival ArrivalOf(std::string name) {
  std::string_view rest = name;
  const std::uint64_t second = TakeNumber(rest);
  std::uint64_t microsecond = 0;
  if (second != kNoNumber && rest.starts_with('.')) {
    rest = rest.substr(1, rest.find('.', 1) - 1);
    const std::size_t mark = rest.find('M');
    if (mark != std::string_view::npos) {
      rest.remove_prefix(mark + 1);
      microsecond = TakeNumber(rest);
    }
  }
  return {second, microsecond == kNoNumber ? 0 : microsecond, std::move(name)};
}

}  // namespace

void SortByArrival(std::vector<std::string>& names) {
  std::vector<Arrival> arrivals;
  arrivals.reserve(names.size());
  for (std::string& name : names) arrivals.push_back(ArrivalOf(std::move(name)));
  std::sort(arrivals.begin(), arrivals.end());
  std::transform(arrivals.begin(), arrivals.end(), names.begin(),
                 [](Arrival& arrival) { return std::move(arrival.Name); });
}

std::string NameOfReadMail(const std::string& name, int copy) {
  std::string read = name.substr(0, name.find(":2,"));
  if (copy > 0) read += "_" + std::to_string(copy);
  return read + ":2,S";
}

}  // namespace Gateway
