using System;
using System.IO;

namespace MenuScribe {

/// Where the module and the driver look for their files.
static class Folders {
  /// The user's profile as the module takes it, from the environment.
  public static string settings() {
    string profile = Environment.GetEnvironmentVariable("USERPROFILE");
    if (string.IsNullOrEmpty(profile)) throw new DirectoryNotFoundException("USERPROFILE is not set");
    return Path.Combine(profile, "Lumetrapad");
  }

  /// Made by the driver at its first start.
  public static string applications() {
    return Path.Combine(settings(), "Applications");
  }

  public static string menuFile() {
    return Path.Combine(applications(), "autocad.mnu");
  }
}

}
