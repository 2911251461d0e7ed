using System;
using System.Collections.Generic;
using System.Globalization;
using Autodesk.AutoCAD.Customization;

namespace MenuScribe {

/// The aliases POP0 to POP999 give the kind of a menu and its place. Main thread.
static class MenuAlias {
  const string kPrefix = "POP";
  const int kFirstPullDown = 1;
  const int kFirstShortcut = 500;
  const int kEnd = 1000;

  /// The numbers of the menu's aliases; a submenu has none.
  public static List<int> numbers(PopMenu menu, Problems problems) {
    List<int> found = new List<int>();
    problems.guard("aliases of a menu", () => collect(menu, found), false);
    return found;
  }

  public static bool isShortcut(List<int> numbers) {
    return numbers.Exists(number => number == 0 || (number >= kFirstShortcut && number < kEnd));
  }

  /// The place on a menu bar that no workspace has arranged; 0 when the menu is no pull-down menu.
  public static int place(List<int> numbers) {
    return numbers.Find(number => number >= kFirstPullDown && number < kFirstShortcut);
  }

  static bool collect(PopMenu menu, List<int> found) {
    foreach (object alias in CuiFile.all(menu.Aliases)) {
      string text = alias as string ?? "";
      int number;
      if (text.StartsWith(kPrefix, StringComparison.OrdinalIgnoreCase) &&
          int.TryParse(text.Substring(kPrefix.Length), NumberStyles.None, CultureInfo.InvariantCulture, out number))
        found.Add(number);
    }
    return true;
  }
}

}
