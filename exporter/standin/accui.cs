// Stand-in of AutoCAD's assembly AcCui. It reads customization files that are plain XML, with the names of AutoCAD's
// classes for elements; AutoCAD's own are archives of such.
//
// It differs from what the exporter is compiled against where AutoCAD may: properties are declared in bases. With LEAN
// defined it lacks more: what a macro consists of are fields, and some members are not there at all.
using System;
using System.Collections;
using System.Collections.Generic;
using System.Reflection;

[assembly: AssemblyVersion("19.0.0.0")]

namespace Autodesk.AutoCAD.Customization {

public class FileOpenException : Exception {
  public FileOpenException(string message) : base(message) {}
}

public abstract class CustomizationElement {
  public string ElementID { get; internal set; }
}

/// The base of all collections: neither generic nor a list.
public abstract class CustomizationCollection : IEnumerable {
  internal readonly List<object> elements = new List<object>();

  public int Count { get { return elements.Count; } }

  public IEnumerator GetEnumerator() {
    return elements.GetEnumerator();
  }
}

public class AliasCollection : CustomizationCollection {}
public class MacroGroupCollection : CustomizationCollection {}
public class MenuMacroCollection : CustomizationCollection {}
public class PartialCuiFileCollection : CustomizationCollection {}
public class PopMenuCollection : CustomizationCollection {}
public class PopMenuItemCollection : CustomizationCollection {}
public class RibbonPanelSourceCollection : CustomizationCollection {}
public class WorkspaceCollection : CustomizationCollection {}

public class WorkspacePopMenuCollection : CustomizationCollection {
  public WorkspacePopMenu FindWorkspacePopMenu(string popMenuId, string menuGroupName) {
    foreach (WorkspacePopMenu menu in elements)
      if (menu.PopMenuID == popMenuId && menu.group == menuGroupName) return menu;
    return null;
  }
}

public class CustomizationSection : CustomizationElement {
  public CustomizationSection(string fileName, bool readOnly) {
    if (!readOnly) throw new InvalidOperationException("the exporter has nothing to write into " + fileName);
    CuiReader.read(fileName, this);
  }

#if !LEAN
  public CustomizationSection(string fileName, bool readOnly, bool showMessageBox) : this(fileName, readOnly) {
    if (showMessageBox) throw new InvalidOperationException("a message box would keep AutoCAD waiting");
  }
#endif

  public MenuGroup MenuGroup { get; internal set; }
  public PartialCuiFileCollection PartialCuiFiles { get; internal set; }
  public WorkspaceCollection Workspaces { get; internal set; }
}

public class MenuGroup : CustomizationElement {
  public string Name { get; internal set; }
  public MacroGroupCollection MacroGroups { get; internal set; }
  public PopMenuCollection PopMenus { get; internal set; }
#if !LEAN
  public RibbonRoot RibbonRoot { get; internal set; }
#endif
}

public class MacroGroup : CustomizationElement {
  public string Name { get; internal set; }
  public MenuMacroCollection MenuMacros { get; internal set; }
}

#if LEAN
public class Macro {
  public string Name;
  public string Command;
}

public class MenuMacro : CustomizationElement {
  public Macro macro;
}
#else
public class Macro {
  public string Name { get; internal set; }
  public string Command { get; internal set; }
  public string HelpString { get; internal set; }
}

public class MenuMacro : CustomizationElement {
  public Macro macro { get; internal set; }
}
#endif

public class PopMenu : CustomizationElement {
  public string Name { get; internal set; }
#if !LEAN
  public string DisplayName { get; internal set; }
#endif
  public PopMenuItemCollection PopMenuItems { get; internal set; }
  public AliasCollection Aliases { get; internal set; }
}

public abstract class PopMenuItemBase : CustomizationElement {}

public class PopMenuItem : PopMenuItemBase {
  internal Func<string, MenuMacro> find;

  public bool IsSeparator { get; internal set; }
  public string Name { get; internal set; }
  public string DisplayName { get; internal set; }
  public string MacroID { get; internal set; }
  public MenuMacro MenuMacroReference { get { return find(MacroID); } }
}

public class PopMenuRef : PopMenuItemBase {
  public string MenuReference { get; internal set; }
}

public class Workspace : CustomizationElement {
  public string Name { get; internal set; }
  public WorkspacePopMenuCollection WorkspacePopMenus { get; internal set; }
}

public class WorkspacePopMenu : CustomizationElement {
  internal string group;

  public string PopMenuID { get; internal set; }
  public int Display { get; internal set; }
}

public class RibbonRoot : CustomizationElement {
  public RibbonPanelSourceCollection RibbonPanelSources { get; internal set; }
}

public class RibbonPanelSource : CustomizationElement {
  internal readonly MenuMacroCollection macros = new MenuMacroCollection();

  public string Name { get; internal set; }
  public string Text { get; internal set; }

  public MenuMacroCollection GetMenuMacros() {
    return macros;
  }
}

}
