// modComponents: creates objects of the sibling components by their names.
//
// If a sibling is missing, the result is empty, and TextNumber::kComponentMissing is shown with the
// component's file if report is true. No function raises a failure. Each call creates a new object, which the
// caller owns. Called on the thread that uses the object.
#pragma once

#include <memory>

#include "platform/contracts/GeneralServices.h"
#include "platform/contracts/ProjectLibrary.h"
#include "platform/contracts/ResourceServices.h"

namespace TvEmailServices {

using namespace Platform;

// A new object by its programmatic name. The report names fileName, or the programmatic name if fileName is
// empty.
ObjectRef GetComponent(const String& programmaticName, bool report, const String& fileName);

RegValue GetRegValue(bool report);
Files GetFiles(bool report);
General GetGeneral(bool report);

// A RegUtil at the hive and path; empty if it can't be moved there. Then kHiveRefused, kPathRefused or the
// raised failure is shown if report is true.
RegUtil GetRegUtil(Hive hive, StringView path, bool report);

// A Resource object with the component's own texts, or with those shared with the project library. If the
// texts can't be loaded the object is given without them.
Resource GetResourceObject(bool report);
Resource GetComResourceObject(bool report);

// The application object of the project library, by itself or by its factory.
std::shared_ptr<TalvaneApplication> GetTalvaneApplication(bool report);

}  // namespace TvEmailServices
