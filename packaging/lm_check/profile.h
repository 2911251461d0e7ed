/// Where a user's profile has what the module reads and writes. Paths in Windows syntax.
#ifndef PACKAGING_LM_CHECK_PROFILE_H
#define PACKAGING_LM_CHECK_PROFILE_H

#include <string>

struct Profile {
  explicit Profile(const std::string& folder)
      : settingsFolder(folder + "\\Lumetrapad"),
        applicationsFolder(settingsFolder + "\\Applications"),
        settingsFile(applicationsFolder + "\\autocad_addin.ini"),
        repairedFile(applicationsFolder + "\\autocad_addin.repaired.ini"),
        menuFile(applicationsFolder + "\\autocad.mnu") {}

  std::string settingsFolder;
  std::string applicationsFolder;
  std::string settingsFile;
  std::string repairedFile;
  std::string menuFile;
};

#endif
