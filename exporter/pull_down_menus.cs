using System;
using System.Collections.Generic;
using Autodesk.AutoCAD.Customization;

namespace MenuScribe {

/// A menu of the menu bar, and the file that it is from.
sealed class PullDownMenu {
  public CuiFile file;
  public PopMenu menu;
  /// Its place when no workspace gives one.
  public int place;
}

/// The menus of the menu bar from left to right, as the current workspace has them; when that cannot be read, all that
/// have a place on the bar. Main thread.
sealed class PullDownMenus {
  readonly Problems mProblems;
  readonly Members mMembers;
  readonly CuiFiles mFiles;

  public readonly List<PullDownMenu> shown = new List<PullDownMenu>();

  public PullDownMenus(CuiFiles files, Members members, Problems problems) {
    mFiles = files;
    mMembers = members;
    mProblems = problems;
    Workspace workspace = currentWorkspace();
    bool isArranged = workspace != null && problems.guard("workspace", () => addShown(workspace), false);
    if (!isArranged) addByPlace();
  }

  /// Workspaces of partial files do not count.
  Workspace currentWorkspace() {
    string name = Host.variable("WSCURRENT");
    return workspaceOf(mFiles.main, name) ?? workspaceOf(mFiles.enterprise, name);
  }

  Workspace workspaceOf(CuiFile file, string name) {
    return file == null ? null : mProblems.guard("workspaces of '" + file.path + "'", () => find(file, name), null);
  }

  static Workspace find(CuiFile file, string name) {
    foreach (object element in CuiFile.all(file.section.Workspaces)) {
      Workspace workspace = element as Workspace;
      if (workspace != null && string.Equals(workspace.Name, name, StringComparison.OrdinalIgnoreCase)) return workspace;
    }
    return null;
  }

  /// False when no menu of the workspace could be found.
  bool addShown(Workspace workspace) {
    bool isAnyFound = false;
    foreach (object element in CuiFile.all(workspace.WorkspacePopMenus)) {
      PullDownMenu found = menuOf(workspace, element);
      if (found == null) continue;
      isAnyFound = true;
      if (mMembers.text(element, "Display") == "1") shown.Add(found);
    }
    return isAnyFound;
  }

  /// Identifiers are unique in their file only. The workspace's lookup by group as well decides between equal ones.
  PullDownMenu menuOf(Workspace workspace, object placed) {
    string identifier = mMembers.text(placed, "PopMenuID");
    PullDownMenu first = null;
    foreach (CuiFile file in mFiles.files) {
      PopMenu menu = file.menu(identifier);
      if (menu == null) continue;
      PullDownMenu found = new PullDownMenu {file = file, menu = menu};
      object meant = mProblems.guard(
          "workspace", () => workspace.WorkspacePopMenus.FindWorkspacePopMenu(identifier, file.group), null);
      if (ReferenceEquals(meant, placed)) return found;
      first = first ?? found;
    }
    return first;
  }

  void addByPlace() {
    foreach (CuiFile file in mFiles.files)
      foreach (PopMenu menu in file.menus) {
        int place = MenuAlias.place(MenuAlias.numbers(menu, mProblems));
        if (place != 0) insert(new PullDownMenu {file = file, menu = menu, place = place});
      }
  }

  /// After those with the same place: List.Sort would not keep their order.
  void insert(PullDownMenu menu) {
    int at = shown.Count;
    while (at > 0 && shown[at - 1].place > menu.place) --at;
    shown.Insert(at, menu);
  }
}

}
