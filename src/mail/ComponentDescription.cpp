// The description of the library: its type library, its one class, its version record and its registration.
#include <algorithm>
#include <array>

#include "src/mail/EMailManager.h"
#include "src/services/ComponentEntry.h"

namespace TvEmailServices {

std::atomic<long> LiveHandlers{0};

namespace {

using enum ArgumentType;

constexpr StringView kLibraryName = u"TvEMailServices";
constexpr StringView kHelpString = u"TVEmailServices (v" TALVANE_VERSION_PADDED u" r1)";
constexpr StringView kVersionText = TALVANE_VERSION_TEXT;
constexpr std::array<std::uint16_t, 4> kVersion = {TALVANE_VERSION_NUMBERS};
constexpr std::uint32_t kEnglish = 1033;
constexpr std::uint16_t kUtf16 = 1200;
constexpr std::uint32_t kWindows32 = 4;
constexpr std::uint32_t kLibraryFile = 2;

constexpr MemberDescription kEMailManagerMembers[] = {
    {u"ConfigureOutBoundEmail", u"ConfigureOutBoundEmail", {}, BooleanWord}};

constexpr InterfaceDescription kEMailManagerInterface = {
    u"_EMailManager", EMailManagerInterfaceId, kLibraryName,
    u"dual, derived from IDispatch, hidden, non-extensible, automation-compatible, version 1.0",
    kEMailManagerMembers};

constexpr ArgumentDescription kInitializeArguments[] = {{u"arg", Text, false},
                                                        {u"MBUser", ObjectReference, true}};
constexpr ArgumentDescription kHandleMessageArguments[] = {{u"mess", ObjectReference, true}};
constexpr ArgumentDescription kConfigureArguments[] = {{u"AddMode", Integer16, true},
                                                       {u"MailBoxName", Text, true},
                                                       {u"ProductName", Text, true},
                                                       {u"Sess", ObjectReference, true}};
constexpr ArgumentDescription kMboxUpdateArguments[] = {{u"MailBoxName", Text, true},
                                                        {u"Sess", ObjectReference, true}};
constexpr ArgumentDescription kMboxDeleteArguments[] = {{u"MailBoxName", Text, true}};

constexpr MemberDescription kMailHandlerMembers[] = {
    {u"Initialize", u"MailHandler_Initialize", kInitializeArguments, None},
    {u"HandleMessage", u"MailHandler_HandleMessage", kHandleMessageArguments, Text},
    {u"Finalize", u"MailHandler_Finalize", {}, None},
    {u"Configure", u"MailHandler_Configure", kConfigureArguments, BooleanWord},
    {u"MboxUpdate", u"MailHandler_MboxUpdate", kMboxUpdateArguments, BooleanWord},
    {u"MboxDelete", u"MailHandler_MboxDelete", kMboxDeleteArguments, None}};

constexpr InterfaceDescription kMailHandlerInterface = {
    u"MailHandler", MailHandlerInterfaceId, u"pvmailinter", {}, kMailHandlerMembers};

constexpr const InterfaceDescription* kMoreInterfaces[] = {&kMailHandlerInterface};

ObjectRef CreateEMailManager() {
  return std::make_shared<EMailManager>();
}

constexpr ClassDescription kClasses[] = {{u"EMailManager", EMailManagerClass, u"1.0",
                                          u"creatable from outside", CreateEMailManager,
                                          &kEMailManagerInterface, kMoreInterfaces}};

constexpr ImportedLibrary kImports[] = {{u"stdole2.tlb", u"stdole", u"2.0"},
                                        {u"pvmailinter.dll", u"pvmailinter", u"9.0"}};

// A 32-bit length, low byte first, and the identifier.
constexpr std::array<std::uint8_t, 20> kDefaultInterfaceResource = [] {
  std::array<std::uint8_t, 20> resource{16};
  std::copy_n(EMailManagerInterfaceId.Bytes.begin(), 16, resource.begin() + 4);
  return resource;
}();

constexpr EmbeddedResource kResources[] = {{u"TYPELIB", 1, {}},
                                           {u"_IID_EMAILMANAGER", 1, kDefaultInterfaceResource},
                                           {u"16", 1, {}}};  // the version record

constexpr TypeLibraryDescription kTypeLibrary = {kLibraryName, "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1000}"_guid,
                                                 kHelpString,  u"1.0",
                                                 kEnglish,     u"32-bit Windows",
                                                 kImports,     kResources};

constexpr VersionField kVersionTexts[] = {
    {u"CompanyName", u"Ostrand Software"},
    {u"LegalCopyright", u"Copyright (c) Ostrand Software"},
    {u"LegalTrademarks", u"Talvane is a trademark of Ostrand Software"},
    {u"FileDescription", u"TvEmailServices dll"},
    {u"ProductName", u"TvEmailServices dll"},
    {u"InternalName", u"TvEmailServices"},
    {u"OriginalFilename", u"TvEmailServices.dll"},
    {u"FileVersion", kVersionText},
    {u"ProductVersion", kVersionText},
    {u"Comments", u"Release build: Apartment Model, Fast Optimzation, Attended"}};

constexpr VersionRecord kVersionRecord = {kVersion,     kVersion, 0,      kWindows32,
                                          kLibraryFile, kEnglish, kUtf16, kVersionTexts};

}  // namespace

// Constant-initialized: it can be read before any code of the library has run.
constinit const ComponentDescription ThisComponent = {
    kLibraryName, kHelpString, {}, u"Apartment", kClasses, &kTypeLibrary, &kVersionRecord, &LiveHandlers};

}  // namespace TvEmailServices
