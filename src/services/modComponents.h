// modComponents: the sibling components, created at run time by their names.
//
// A sibling that isn't there is no failure here: a getter gives an empty reference, and shows message 10044
// with the component's file if report is on. No failure leaves these functions. Nothing is kept: each call
// makes a new object, which the caller owns. Called on the thread that uses the object.
#pragma once

#include <memory>

#include "platform/contracts/GeneralServices.h"
#include "platform/contracts/ProjectLibrary.h"
#include "platform/contracts/ResourceServices.h"

namespace TvEmailServices {

using namespace Platform;

// A new object by its programmatic name, or nothing. The report names fileName, or the programmatic name
// where that is empty.
ObjectRef GetComponent(const String& programmaticName, bool report, const String& fileName);

RegValue GetRegValue(bool report);
Files GetFiles(bool report);
General GetGeneral(bool report);

// A RegUtil that stands at the hive and path, or nothing. Shows 10014 or 10016 where the hive or the path
// can't be taken, and a raised failure as it is, if report is on.
RegUtil GetRegUtil(Hive hive, const String& path, bool report);

// A Resource object with the component's own texts, or with those shared with the project library. It is
// given also when its texts couldn't be loaded.
Resource GetResourceObject(bool report);
Resource GetComResourceObject(bool report);

// The application object of the project library, or nothing.
std::shared_ptr<TalvaneApplication> GetTalvaneApplication(bool report);

}  // namespace TvEmailServices
