// modMain: message boxes, and the texts shared with the project library.
//
// A box has one OK button and the text of 9000 as its title. No failure leaves these functions, and a box
// that can't be shown is passed over. Called on the thread whose user is to see the box.
#pragma once

#include "platform/Failure.h"
#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// A text of the project library, from a resource object of its own that is dropped at once.
String LoadTVCOMResourceString(std::int32_t number);

// The text of number, a blank, and detail. A numeric detail stands for the text of that number.
void ShowResourceMessage(std::int32_t number, const String& detail);

// The text of number with the arguments put into it.
void ShowResourceMessageV(std::int32_t number, const Array& arguments);

// The failure's description; behind it a blank and the text of number, if that is above 0; then extra,
// without a blank.
void ShowErrorMessage(const Failure& failure, std::int32_t number, const String& extra);

// ShowErrorMessage of the failure being handled, and false: how a procedure with a failure path ends. To be
// called in a catch block alone.
bool ReportFailure(std::int32_t number = 0);

// The failure's description, two blanks, and the text of number with the arguments put into it.
void ShowErrorMessageV(const Failure& failure, std::int32_t number, const Array& arguments);

}  // namespace TvEmailServices
