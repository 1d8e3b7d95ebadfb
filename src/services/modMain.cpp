#include "src/services/modMain.h"

#include "platform/Forms/FormsToolkit.h"
#include "platform/NumberReader.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "src/services/IgnoreFailure.h"
#include "src/services/ResourceObjects.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

void ShowText(const String& text) {
  const String title = LoadTvResourceString(TextNumber::kBoxTitle);
  IgnoreFailure([&] { Services().Toolkit().MessageBox(text, title); });
}

}  // namespace

String LoadTVCOMResourceString(std::int32_t number) {
  return TextOf(CreateComResourceObject(),
                [&](const Resource& resource) { return resource.ResourceString(number); });
}

void ShowResourceMessage(std::int32_t number, const String& detail) {
  String text;
  // A numeric detail that is no 32-bit number fails here; the box is then shown without a text.
  IgnoreFailure([&] {
    const String first = LoadTvResourceString(number) + u" ";
    text = first + (IsNumeric(detail) ? LoadTvResourceString(ReadInt32(detail)) : detail);
  });
  ShowText(text);
}

bool Refuse(std::int32_t number) {
  ShowResourceMessage(number, {});
  return false;
}

void ShowResourceMessageV(std::int32_t number, const Array& arguments) {
  ShowText(LoadTVResourceStringV(number, arguments));
}

void ShowErrorMessage(const Failure& failure, std::int32_t number, const String& extra) {
  String text = failure.Description();
  if (number > 0) text.append(u" ").append(LoadTvResourceString(number));
  ShowText(text.append(extra));
}

bool ReportFailure(std::int32_t number) {
  ShowErrorMessage(CurrentFailure(), number, {});
  return false;
}

void ShowErrorMessageV(const Failure& failure, std::int32_t number, const Array& arguments) {
  ShowText(failure.Description() + u"  " + LoadTVResourceStringV(number, arguments));
}

}  // namespace TvEmailServices
