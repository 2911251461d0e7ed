using System.Collections.Generic;
using Autodesk.AutoCAD.Customization;

namespace MenuScribe {

/// All that can be put on a key, in the order of the menu file: the pull-down menus of the current workspace as AutoCAD
/// shows them, then what else has a macro, each macro once: shortcut menus, the ribbon's panels and the other commands,
/// under a heading each. Main thread.
sealed class MenuReader {
  static readonly Caption kShortcutMenus = new Caption("Shortcut menus", "");
  static readonly Caption kRibbon = new Caption("Ribbon", "");
  static readonly Caption kOther = new Caption("Other commands", "");

  enum Repeat { Yes, No }

  readonly Problems mProblems;
  readonly Dictionary<string, bool> mTaken = new Dictionary<string, bool>();

  public readonly List<MenuItem> items = new List<MenuItem>();

  public MenuReader(CuiFiles files, Members members, Problems problems) {
    mProblems = problems;
    foreach (PullDownMenu shown in new PullDownMenus(files, members, problems).shown)
      addMenu(shown.file, shown.menu, new Caption[0], Repeat.Yes);
    foreach (CuiFile file in files.files) addShortcutMenus(file);
    // An AutoCAD without these types costs the headings only: the macros are among the other commands then.
    foreach (CuiFile file in files.files) problems.guard("ribbon of '" + file.path + "'", () => addRibbon(file), false);
    foreach (CuiFile file in files.files) addOthers(file);
  }

  void addShortcutMenus(CuiFile file) {
    foreach (PopMenu menu in file.menus)
      if (MenuAlias.isShortcut(MenuAlias.numbers(menu, mProblems)))
        addMenu(file, menu, new[] {kShortcutMenus}, Repeat.No);
  }

  bool addRibbon(CuiFile file) {
    foreach (object element in CuiFile.all(file.menuGroup.RibbonRoot.RibbonPanelSources)) {
      RibbonPanelSource panel = element as RibbonPanelSource;
      if (panel != null) mProblems.guard("ribbon of '" + file.path + "'", () => addPanel(file, panel), false);
    }
    return true;
  }

  bool addPanel(CuiFile file, RibbonPanelSource panel) {
    string name = string.IsNullOrEmpty(panel.Text) ? panel.Name : panel.Text;
    Caption[] heading = {kRibbon, new Caption(name, panel.ElementID)};
    foreach (object macro in CuiFile.all(panel.GetMenuMacros())) addMacro(file, macro as MenuMacro, heading);
    return true;
  }

  void addOthers(CuiFile file) {
    foreach (MenuMacro macro in file.macros) addMacro(file, macro, new[] {kOther});
  }

  void addMacro(CuiFile file, MenuMacro macro, Caption[] heading) {
    string identifier = file.identifier(macro);
    if (isTaken(file, identifier) || file.command(macro).Length == 0) return;
    add(file, macro, identifier, MenuWalk.extended(heading, new Caption(file.name(macro), identifier)));
  }

  void addMenu(CuiFile file, PopMenu menu, Caption[] above, Repeat repeat) {
    foreach (PlacedItem placed in new MenuWalk(file, mProblems).itemsOf(menu, above))
      if (repeat == Repeat.Yes || !isTaken(file, file.identifier(placed.macro)))
        add(file, placed.macro, placed.identifier, placed.path);
  }

  bool isTaken(CuiFile file, string identifier) {
    return mTaken.ContainsKey(file.group + "." + identifier);
  }

  void add(CuiFile file, MenuMacro macro, string identifier, Caption[] path) {
    MenuItem item = new MenuItem();
    item.identifier = file.group + "." + identifier;
    item.path = path;
    item.command = file.command(macro);
    item.help = file.help(macro);
    items.Add(item);
    if (macro != null) mTaken[file.group + "." + file.identifier(macro)] = true;
  }
}

}
