using System.Collections.Generic;
using Autodesk.AutoCAD.Customization;

namespace MenuScribe {

/// A menu item where it was found. `macro` is null when the one that the item refers to is not there.
sealed class PlacedItem {
  public string identifier;
  public MenuMacro macro;
  public Caption[] path;
}

/// Unfolds a menu: its items and those of its submenus, in their order, separators left out. Main thread.
sealed class MenuWalk {
  readonly CuiFile mFile;
  readonly Problems mProblems;
  readonly List<PlacedItem> mItems = new List<PlacedItem>();
  /// The menus on the way down: one may lead back to itself through another.
  readonly List<string> mAbove = new List<string>();

  public MenuWalk(CuiFile file, Problems problems) {
    mFile = file;
    mProblems = problems;
  }

  public List<PlacedItem> itemsOf(PopMenu menu, Caption[] above) {
    guarded(() => walk(menu, above));
    return mItems;
  }

  void guarded(System.Func<bool> step) {
    mProblems.guard("menu in '" + mFile.path + "'", step, false);
  }

  bool walk(PopMenu menu, Caption[] above) {
    if (menu == null || mAbove.Contains(menu.ElementID)) return false;
    mAbove.Add(menu.ElementID);
    Caption[] path = extended(above, captionOf(menu));
    foreach (object element in CuiFile.all(menu.PopMenuItems)) guarded(() => take(element, path));
    mAbove.Remove(menu.ElementID);
    return true;
  }

  bool take(object element, Caption[] path) {
    PopMenuRef reference = element as PopMenuRef;
    if (reference != null) return walk(mFile.target(reference), path);
    PopMenuItem item = element as PopMenuItem;
    if (item == null || item.IsSeparator) return false;
    PlacedItem placed = new PlacedItem();
    placed.macro = mFile.macro(item.MacroID) ?? mProblems.guard(mFile.path, () => item.MenuMacroReference, null);
    placed.identifier = mFile.identifier(item);
    placed.path = extended(path, captionOf(item, placed));
    mItems.Add(placed);
    return true;
  }

  Caption captionOf(PopMenu menu) {
    string shown = mProblems.guard(mFile.path, () => menu.DisplayName, null);
    return new Caption(string.IsNullOrEmpty(shown) || Caption.isExpression(shown) ? menu.Name : shown, menu.ElementID);
  }

  /// An item without a name of its own is shown with its macro's.
  Caption captionOf(PopMenuItem item, PlacedItem placed) {
    string name = item.Name;
    if (Caption.isExpression(name)) name = mProblems.guard(mFile.path, () => item.DisplayName, null);
    if (string.IsNullOrEmpty(name) || Caption.isExpression(name)) name = mFile.name(placed.macro);
    return new Caption(name, placed.identifier);
  }

  public static Caption[] extended(Caption[] path, Caption last) {
    Caption[] longer = new Caption[path.Length + 1];
    path.CopyTo(longer, 0);
    longer[path.Length] = last;
    return longer;
  }
}

}
