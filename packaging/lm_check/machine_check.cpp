#include "packaging/lm_check/machine.h"

#include <string_view>

namespace {

std::string joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ", ") + text;
  return result;
}

void checkAutoCad(const Machine& machine, Findings& findings) {
  if (machine.hasAutoCad) return;
  // A finding of its own: AutoCAD is there, and "missing" would puzzle the user.
  if (machine.has32BitAutoCad)
    findings.push_back({"autocad.bitness",
                        "AutoCAD: the AutoCAD 2013 on this machine is the 32-bit one, which cannot load "
                        "the module; install the 64-bit one."});
  else
    findings.push_back({"autocad.missing",
                        "AutoCAD: the registry names no AutoCAD 2013 (release R19.0), and the module works "
                        "with no other release; install AutoCAD 2013, 64-bit."});
}

void checkBundle(const Bundle& bundle, Findings& findings) {
  const std::string where = "Bundle: '" + bundle.folder + "' ";
  if (!bundle.missing.empty())
    findings.push_back(
        {"bundle.incomplete", where + "lacks " + joined(bundle.missing) + "; repair the installation."});
  if (!bundle.not64Bit.empty())
    findings.push_back({"bundle.bitness", where + "has programs that are not 64-bit Windows programs (" +
                                              joined(bundle.not64Bit) + "); repair the installation."});
  if (!bundle.blocked.empty())
    findings.push_back(
        {"bundle.blocked", where + "has files that Windows marks as coming from the Internet (" +
                               joined(bundle.blocked) +
                               "), so that AutoCAD may not load them; press "
                               "'Unblock' in their properties, or unpack the zip file again after "
                               "unblocking it."});
}

void checkBundles(const Machine& machine, Findings& findings) {
  if (machine.bundles.empty())
    findings.push_back({"bundle.missing",
                        "Bundle: there is no Lumetrapad.bundle in any of the folders that AutoCAD looks "
                        "into (" +
                            joined(machine.bundlePlaces) + "); install the plug-in."});
  // The text names the last one, the user's own, which can be removed without an administrator.
  if (machine.bundles.size() > 1)
    findings.push_back({"bundle.twice",
                        "Bundle: it is installed for all users and for this user, and AutoCAD finds it "
                        "twice; remove '" +
                            machine.bundles.back().folder + "'."});
  for (const Bundle& bundle : machine.bundles) checkBundle(bundle, findings);
}

void checkClientPlace(const ClientLibrary& client, Findings& findings) {
  const std::string what = "Driver: the client library lmt_ctrlr_64.dll ";
  // The most special case first, and one finding at most: the others would only follow from it.
  if (client.path.empty() && client.isInDriverFolder)
    findings.push_back(
        {"client.not-on-path", what + "is in '" + client.driverFolder +
                                   "', where the module does not find "
                                   "it; add that folder to PATH, or copy the file beside the module."});
  else if (client.path.empty())
    findings.push_back(
        {"client.missing", what + "is neither beside the module nor on the search path, so that AutoCAD "
                                  "cannot load the module; install the driver."});
  else if (!client.is64Bit)
    findings.push_back({"client.bitness", what + "in '" + client.path +
                                              "' is not a 64-bit library; install the driver for "
                                              "64-bit Windows."});
  else if (client.loadError != 0)
    findings.push_back(
        {"client.not-loadable", what + "in '" + client.path + "' cannot be loaded (Windows error " +
                                    std::to_string(client.loadError) + "); install the driver again."});
}

void checkOperations(const ClientLibrary& client, Findings& findings) {
  if (client.missingOperations.empty()) return;
  std::vector<std::string> numbers;
  numbers.reserve(client.missingOperations.size());
  for (const int number : client.missingOperations) numbers.push_back(std::to_string(number));
  findings.push_back({"client.operations", "Driver: the client library '" + client.path +
                                               "' lacks operations that the module "
                                               "needs (numbers " +
                                               joined(numbers) +
                                               "), so that AutoCAD cannot load the "
                                               "module; update the driver."});
}

void checkDevices(const ClientLibrary& client, Findings& findings) {
  if (client.devices.empty())
    findings.push_back({"device.none", "Device: the driver runs and knows no device; plug the device in."});
  // One such device keeps the module from connecting at all, so each is a finding.
  for (std::size_t i = 0; i < client.devices.size(); ++i)
    if (!client.devices[i])
      findings.push_back(
          {"device.unknown", "Device: the driver does not describe its device " + std::to_string(i) +
                                 ", with which the module does not connect; plug the device in again."});
}

void checkConnection(const ClientLibrary& client, Findings& findings) {
  switch (client.connection) {
    // The library could not be loaded or called, which has its own finding.
    case Connection::kNotTried:
      break;
    case Connection::kHangs:
      findings.push_back({"daemon.hangs", "Driver: it did not respond within ten seconds; restart it."});
      break;
    case Connection::kRefused:
      findings.push_back(
          {"daemon.refuses", "Driver: it does not accept a connection; start it, or restart it if it runs."});
      break;
    case Connection::kNoCount:
      findings.push_back(
          {"daemon.no-count", "Driver: it accepts a connection and does not tell its devices; restart it."});
      break;
    case Connection::kOpen:
      checkDevices(client, findings);
      break;
  }
}

void checkCodePage(const Machine& machine, Findings& findings) {
  const std::string page = "Code page: '";
  const std::string number = std::to_string(machine.codePage);
  for (const std::string& path : machine.lossyPaths)
    findings.push_back({"codepage.lossy",
                        page + path + "' has letters that Windows' code page " + number +
                            " does not have, so that the module cannot find it; use a folder without them, "
                            "or set the language for non-Unicode programs."});
  for (const std::string& path : machine.misreadPaths)
    findings.push_back(
        {"codepage.backslash", page + path +
                                   "' has a letter that the module takes for a backslash in code "
                                   "page " +
                                   number +
                                   ", so that it cuts the path there; use a folder without "
                                   "it."});
}

}  // namespace

Findings checkMachine(const Machine& machine) {
  Findings findings;
  checkAutoCad(machine, findings);
  checkBundles(machine, findings);
  checkClientPlace(machine.client, findings);
  checkOperations(machine.client, findings);
  checkConnection(machine.client, findings);
  checkCodePage(machine, findings);
  return findings;
}
