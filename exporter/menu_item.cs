using System.Collections.Generic;

namespace MenuScribe {

/// A menu item as AutoCAD has it.
sealed class MenuItem {
  /// Name of its menu group and its identifier in there.
  public string identifier = "";
  /// The menus on the way to it, outermost first, and itself.
  public Caption[] path = new Caption[0];
  /// Its macro; empty when it has none, or refers to one that is not there.
  public string command = "";
  public string help = "";
}

}
