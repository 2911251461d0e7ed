// What the exporter uses of AutoCAD's assembly AcCui. Only compiled against, never shipped.
//
// A property is declared on the class that it is used through, whichever base has it in AutoCAD: a reference is looked
// up in the named class and then in its bases, never below. Collections are walked as IEnumerable, so they declare
// nothing of their own. What may be a property or a field is missing here; the exporter reads it by name.
using System;
using System.Reflection;

[assembly: AssemblyVersion("19.0.0.0")]

namespace Autodesk.AutoCAD.Customization {

public class CustomizationSection {
  public CustomizationSection(string fileName, bool readOnly) {}
  public CustomizationSection(string fileName, bool readOnly, bool showMessageBox) {}
  public MenuGroup MenuGroup { get { throw null; } }
  public PartialCuiFileCollection PartialCuiFiles { get { throw null; } }
  public WorkspaceCollection Workspaces { get { throw null; } }
}

public class MenuGroup {
  MenuGroup() {}
  public string Name { get { throw null; } }
  public MacroGroupCollection MacroGroups { get { throw null; } }
  public PopMenuCollection PopMenus { get { throw null; } }
  public RibbonRoot RibbonRoot { get { throw null; } }
}

public class MacroGroup {
  MacroGroup() {}
  public MenuMacroCollection MenuMacros { get { throw null; } }
}

public class MenuMacro {
  MenuMacro() {}
  public string ElementID { get { throw null; } }
}

public class PopMenu {
  PopMenu() {}
  public string ElementID { get { throw null; } }
  public string Name { get { throw null; } }
  public string DisplayName { get { throw null; } }
  public PopMenuItemCollection PopMenuItems { get { throw null; } }
  public AliasCollection Aliases { get { throw null; } }
}

public class PopMenuItem {
  PopMenuItem() {}
  public bool IsSeparator { get { throw null; } }
  public string Name { get { throw null; } }
  public string DisplayName { get { throw null; } }
  public string MacroID { get { throw null; } }
  public MenuMacro MenuMacroReference { get { throw null; } }
}

public class PopMenuRef {
  PopMenuRef() {}
}

public class Workspace {
  Workspace() {}
  public string Name { get { throw null; } }
  public WorkspacePopMenuCollection WorkspacePopMenus { get { throw null; } }
}

public class WorkspacePopMenu {
  WorkspacePopMenu() {}
}

public class RibbonRoot {
  RibbonRoot() {}
  public RibbonPanelSourceCollection RibbonPanelSources { get { throw null; } }
}

public class RibbonPanelSource {
  RibbonPanelSource() {}
  public string ElementID { get { throw null; } }
  public string Name { get { throw null; } }
  public string Text { get { throw null; } }
  public MenuMacroCollection GetMenuMacros() { throw null; }
}

public class AliasCollection { AliasCollection() {} }
public class MacroGroupCollection { MacroGroupCollection() {} }
public class MenuMacroCollection { MenuMacroCollection() {} }
public class PartialCuiFileCollection { PartialCuiFileCollection() {} }
public class PopMenuCollection { PopMenuCollection() {} }
public class PopMenuItemCollection { PopMenuItemCollection() {} }
public class RibbonPanelSourceCollection { RibbonPanelSourceCollection() {} }
public class WorkspaceCollection { WorkspaceCollection() {} }
public class WorkspacePopMenuCollection {
  WorkspacePopMenuCollection() {}
  public WorkspacePopMenu FindWorkspacePopMenu(string popMenuId, string menuGroupName) { throw null; }
}

}
