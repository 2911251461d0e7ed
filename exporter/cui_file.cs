using System;
using System.Collections;
using System.Collections.Generic;
using Autodesk.AutoCAD.Customization;

namespace MenuScribe {

/// One of AutoCAD's customization files, open for reading, with its menus and macros by identifier. Main thread.
sealed class CuiFile {
  readonly Problems mProblems;
  readonly Members mMembers;
  readonly Dictionary<string, PopMenu> mMenusById = new Dictionary<string, PopMenu>();
  readonly Dictionary<string, MenuMacro> mMacrosById = new Dictionary<string, MenuMacro>();

  public readonly string path;
  public readonly CustomizationSection section;
  public readonly string group;
  public readonly MenuGroup menuGroup;
  public readonly List<PopMenu> menus = new List<PopMenu>();
  public readonly List<MenuMacro> macros = new List<MenuMacro>();

  /// Throws when AutoCAD cannot read the file.
  public CuiFile(string path, Problems problems, Members members) {
    this.path = path;
    mProblems = problems;
    mMembers = members;
    section = open(path);
    menuGroup = section.MenuGroup;
    if (menuGroup == null) throw new InvalidOperationException("it has no menu group");
    group = problems.guard(path, () => menuGroup.Name, null) ?? "";
    problems.guard(path, takeMacros, false);
    problems.guard(path, takeMenus, false);
  }

  public PopMenu menu(string identifier) {
    PopMenu found;
    return mMenusById.TryGetValue(identifier ?? "", out found) ? found : null;
  }

  public MenuMacro macro(string identifier) {
    MenuMacro found;
    return mMacrosById.TryGetValue(identifier ?? "", out found) ? found : null;
  }

  /// The macro's text in AutoCAD's running release.
  public string command(MenuMacro macro) {
    return mMembers.text(mMembers.value(macro, "macro"), "Command");
  }

  public string help(MenuMacro macro) {
    return mMembers.text(mMembers.value(macro, "macro"), "HelpString");
  }

  public string name(MenuMacro macro) {
    return mMembers.text(mMembers.value(macro, "macro"), "Name");
  }

  /// The menu that a reference in another menu leads to. The reference may give the menu itself or its identifier only.
  public PopMenu target(PopMenuRef reference) {
    object found = mMembers.value(reference, "MenuReference");
    return found as PopMenu ?? menu(found as string);
  }

  public string identifier(MenuMacro macro) {
    return macro == null ? "" : mProblems.guard(path, () => macro.ElementID, null) ?? "";
  }

  /// An item's own identifier, or its macro's.
  public string identifier(PopMenuItem item) {
    string own = mMembers.text(item, "ElementID");
    return own.Length != 0 ? own : item.MacroID ?? "";
  }

  /// AutoCAD's collections, walked by nothing but what every collection has.
  public static IEnumerable all(object collection) {
    return collection as IEnumerable ?? new object[0];
  }

  static CustomizationSection open(string path) {
    try {
      return openSilently(path);
    } catch (MissingMethodException) {
      return openPlainly(path);
    }
  }

  /// With messages on the command line instead of boxes. A method of its own, because AutoCAD may lack the constructor.
  [System.Runtime.CompilerServices.MethodImpl(System.Runtime.CompilerServices.MethodImplOptions.NoInlining)]
  static CustomizationSection openSilently(string path) {
    return new CustomizationSection(path, true, false);
  }

  [System.Runtime.CompilerServices.MethodImpl(System.Runtime.CompilerServices.MethodImplOptions.NoInlining)]
  static CustomizationSection openPlainly(string path) {
    return new CustomizationSection(path, true);
  }

  bool takeMacros() {
    foreach (object element in all(menuGroup.MacroGroups)) {
      MacroGroup groupOfMacros = element as MacroGroup;
      if (groupOfMacros == null) continue;
      foreach (object macro in all(groupOfMacros.MenuMacros)) mProblems.guard(path, () => take(macro as MenuMacro), false);
    }
    return true;
  }

  bool take(MenuMacro macro) {
    if (macro == null) return false;
    macros.Add(macro);
    string identifier = macro.ElementID ?? "";
    if (!mMacrosById.ContainsKey(identifier)) mMacrosById[identifier] = macro;
    return true;
  }

  bool takeMenus() {
    foreach (object element in all(menuGroup.PopMenus)) mProblems.guard(path, () => take(element as PopMenu), false);
    return true;
  }

  bool take(PopMenu menu) {
    if (menu == null) return false;
    menus.Add(menu);
    string identifier = menu.ElementID ?? "";
    if (!mMenusById.ContainsKey(identifier)) mMenusById[identifier] = menu;
    return true;
  }
}

}
