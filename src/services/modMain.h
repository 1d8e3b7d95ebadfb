// modMain: message boxes, and the texts shared with the project library.
//
// A box has one OK button and the title TextNumber::kBoxTitle. No function raises a failure; a box that can't
// be shown is left out. Called on the thread of the user's forms.
#pragma once

#include "platform/Failure.h"
#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// A text of the project library, from a new resource object at each call.
String LoadTVCOMResourceString(std::int32_t number);

// Shows the text of number, a blank, and detail. A numeric detail is replaced by the text of that number.
void ShowResourceMessage(std::int32_t number, const String& detail);

// Shows ShowResourceMessage without a detail, and gives false: for a procedure that refuses its input.
bool Refuse(std::int32_t number);

// Shows the text of number with the arguments in it.
void ShowResourceMessageV(std::int32_t number, const Array& arguments);

// Shows the failure's description; if number is above 0, a blank and its text; then extra, without a blank.
void ShowErrorMessage(const Failure& failure, std::int32_t number, const String& extra);

// Shows ShowErrorMessage for the failure being handled, and gives false. To be called in a catch block only.
bool ReportFailure(std::int32_t number = 0);

// Shows the failure's description, two blanks, and the text of number with the arguments in it.
void ShowErrorMessageV(const Failure& failure, std::int32_t number, const Array& arguments);

}  // namespace TvEmailServices
