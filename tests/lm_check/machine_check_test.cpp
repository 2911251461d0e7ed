#include "packaging/lm_check/machine.h"
#include "tests/lm_check/finding_texts.h"

#include <gmock/gmock.h>

#include <ostream>
#include <string>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::textsOf;

const std::string kBundle = "C:\\Program Files\\Autodesk\\ApplicationPlugins\\Lumetrapad.bundle";

/// One on which nothing is wrong.
Machine wholeMachine() {
  Machine machine;
  machine.hasAutoCad = true;
  machine.bundlePlaces = {"C:\\Program Files\\Autodesk\\ApplicationPlugins",
                          "C:\\Roaming\\Autodesk\\ApplicationPlugins"};
  machine.bundles = {{kBundle, true, {}, {}, {}}};
  machine.client.path = "C:\\Driver\\lmt_ctrlr_64.dll";
  machine.client.connection = Connection::kOpen;
  machine.client.devices = {"Lumetrapad"};
  machine.codePage = 1252;
  return machine;
}

struct Broken {
  std::string name;
  void (*breakIt)(Machine&);
  std::string text;
};

void PrintTo(const Broken& broken, std::ostream* streamP) {
  *streamP << broken.name;
}

class MachineCheck : public ::testing::TestWithParam<Broken> {};

TEST_P(MachineCheck, CheckFindsWhatIsBroken) {
  Machine machine = wholeMachine();
  GetParam().breakIt(machine);
  EXPECT_THAT(textsOf(checkMachine(machine)), ElementsAre(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    All, MachineCheck,
    ::testing::Values(
        Broken{"NoAutoCad", [](Machine& m) { m.hasAutoCad = false; },
               "AutoCAD: the registry names no AutoCAD 2013 (release R19.0), and the module works with no "
               "other release; "
               "install AutoCAD 2013, 64-bit."},
        Broken{"AutoCadOf32Bit",
               [](Machine& m) {
                 m.hasAutoCad = false;
                 m.has32BitAutoCad = true;
               },
               "AutoCAD: the AutoCAD 2013 on this machine is the 32-bit one, which cannot load the module; "
               "install the "
               "64-bit one."},
        Broken{"NoBundle", [](Machine& m) { m.bundles.clear(); },
               "Bundle: there is no Lumetrapad.bundle in any of the folders that AutoCAD looks into "
               "(C:\\Program "
               "Files\\Autodesk\\ApplicationPlugins, C:\\Roaming\\Autodesk\\ApplicationPlugins); install the "
               "plug-in."},
        Broken{"TwoBundles",
               [](Machine& m) {
                 m.bundles.push_back({"C:\\Roaming\\Lumetrapad.bundle", false, {}, {}, {}});
               },
               "Bundle: it is installed for all users and for this user, and AutoCAD finds it twice; remove "
               "'C:\\Roaming\\Lumetrapad.bundle'."},
        Broken{"IncompleteBundle",
               [](Machine& m) {
                 m.bundles[0].missing = {"Contents\\LMTRAutoCAD2013.arx", "PackageContents.xml"};
               },
               "Bundle: '" + kBundle +
                   "' lacks Contents\\LMTRAutoCAD2013.arx, PackageContents.xml; repair the installation."},
        Broken{"ModuleOf32Bit", [](Machine& m) { m.bundles[0].not64Bit = {"Contents\\LMTRAutoCAD2013.arx"}; },
               "Bundle: '" + kBundle +
                   "' has programs that are not 64-bit Windows programs (Contents\\LMTRAutoCAD2013.arx); "
                   "repair the "
                   "installation."},
        Broken{"BlockedBundle", [](Machine& m) { m.bundles[0].blocked = {"Contents\\LMTRAutoCAD2013.arx"}; },
               "Bundle: '" + kBundle +
                   "' has files that Windows marks as coming from the Internet "
                   "(Contents\\LMTRAutoCAD2013.arx), so that "
                   "AutoCAD may not load them; press 'Unblock' in their properties, or unpack the zip file "
                   "again after "
                   "unblocking it."},
        Broken{"NoClientLibrary", [](Machine& m) { m.client = {}; },
               "Driver: the client library lmt_ctrlr_64.dll is neither beside the module nor on the search "
               "path, so that "
               "AutoCAD cannot load the module; install the driver."},
        Broken{"ClientLibraryOffThePath",
               [](Machine& m) {
                 m.client = {};
                 m.client.driverFolder = "C:\\Driver";
                 m.client.isInDriverFolder = true;
               },
               "Driver: the client library lmt_ctrlr_64.dll is in 'C:\\Driver', where the module does not "
               "find it; add "
               "that folder to PATH, or copy the file beside the module."},
        Broken{"ClientLibraryOf32Bit",
               [](Machine& m) {
                 m.client.is64Bit = false;
                 m.client.connection = Connection::kNotTried;
               },
               "Driver: the client library lmt_ctrlr_64.dll in 'C:\\Driver\\lmt_ctrlr_64.dll' is not a "
               "64-bit library; "
               "install the driver for 64-bit Windows."},
        Broken{"ClientLibraryThatDoesNotLoad",
               [](Machine& m) {
                 m.client.loadError = 126;
                 m.client.connection = Connection::kNotTried;
               },
               "Driver: the client library lmt_ctrlr_64.dll in 'C:\\Driver\\lmt_ctrlr_64.dll' cannot be "
               "loaded (Windows "
               "error 126); install the driver again."},
        Broken{"OldClientLibrary",
               [](Machine& m) {
                 m.client.missingOperations = {117, 180};
                 m.client.connection = Connection::kNotTried;
               },
               "Driver: the client library 'C:\\Driver\\lmt_ctrlr_64.dll' lacks operations that the module "
               "needs "
               "(numbers 117, 180), so that AutoCAD cannot load the module; update the driver."},
        Broken{"DriverThatHangs", [](Machine& m) { m.client.connection = Connection::kHangs; },
               "Driver: it did not respond within ten seconds; restart it."},
        Broken{"DriverThatRefuses", [](Machine& m) { m.client.connection = Connection::kRefused; },
               "Driver: it does not accept a connection; start it, or restart it if it runs."},
        Broken{"DriverThatCountsNothing", [](Machine& m) { m.client.connection = Connection::kNoCount; },
               "Driver: it accepts a connection and does not tell its devices; restart it."},
        Broken{"NoDevice", [](Machine& m) { m.client.devices.clear(); },
               "Device: the driver runs and knows no device; plug the device in."},
        Broken{"DeviceWithoutDescription", [](Machine& m) { m.client.devices.push_back(std::nullopt); },
               "Device: the driver does not describe its device 1, with which the module does not connect; "
               "plug the device "
               "in again."},
        Broken{"ProfileOutsideOfTheCodePage", [](Machine& m) { m.lossyPaths = {"C:\\Users\\__"}; },
               "Code page: 'C:\\Users\\__' has letters that Windows' code page 1252 does not have, so that "
               "the module "
               "cannot find it; use a folder without them, or set the language for non-Unicode programs."},
        Broken{"LetterThatLooksLikeABackslash",
               [](Machine& m) {
                 m.codePage = 932;
                 m.misreadPaths = {"C:\\Users\\x"};
               },
               "Code page: 'C:\\Users\\x' has a letter that the module takes for a backslash in code page "
               "932, so that it "
               "cuts the path there; use a folder without it."}),
    [](const ::testing::TestParamInfo<Broken>& broken) { return broken.param.name; });

TEST(MachineCheckWhole, WholeMachineHasNoFindings) {
  EXPECT_THAT(textsOf(checkMachine(wholeMachine())), IsEmpty());
}

}  // namespace
