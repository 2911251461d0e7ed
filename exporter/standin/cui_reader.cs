using System;
using System.Collections.Generic;
using System.IO;
using System.Xml;

namespace Autodesk.AutoCAD.Customization {

/// Reads a customization file of the stand-in.
sealed class CuiReader {
  readonly CustomizationSection mSection;
  readonly Dictionary<string, MenuMacro> mMacros = new Dictionary<string, MenuMacro>();

  CuiReader(CustomizationSection section) {
    mSection = section;
  }

  /// Throws FileOpenException for what is no such file.
  public static void read(string path, CustomizationSection section) {
    try {
      // Other processes may write it meanwhile: the host takes no lock.
      using (FileStream file = new FileStream(path, FileMode.Open, FileAccess.Read, FileShare.ReadWrite | FileShare.Delete)) {
        XmlDocument document = new XmlDocument {PreserveWhitespace = true};
        document.Load(file);
        new CuiReader(section).take(document.DocumentElement);
      }
    } catch (XmlException failure) {
      throw new FileOpenException("not a valid customization file: " + failure.Message);
    } catch (IOException failure) {
      throw new FileOpenException(failure.Message);
    } catch (UnauthorizedAccessException failure) {
      throw new FileOpenException(failure.Message);
    }
  }

  void take(XmlElement root) {
    mSection.PartialCuiFiles = new PartialCuiFileCollection();
    foreach (XmlElement element in children(root, "PartialCuiFile"))
      mSection.PartialCuiFiles.elements.Add(element.GetAttribute("Name"));
    XmlElement group = child(root, "MenuGroup");
    if (group != null) mSection.MenuGroup = menuGroup(group);
    mSection.Workspaces = new WorkspaceCollection();
    foreach (XmlElement element in children(root, "Workspace")) mSection.Workspaces.elements.Add(workspace(element));
  }

  MenuGroup menuGroup(XmlElement element) {
    MenuGroup group = new MenuGroup {Name = element.GetAttribute("Name"), MacroGroups = new MacroGroupCollection(),
                                     PopMenus = new PopMenuCollection()};
    foreach (XmlElement macros in children(element, "MacroGroup")) group.MacroGroups.elements.Add(macroGroup(macros));
    foreach (XmlElement menu in children(element, "PopMenu")) group.PopMenus.elements.Add(popMenu(menu));
#if !LEAN
    group.RibbonRoot = new RibbonRoot {RibbonPanelSources = new RibbonPanelSourceCollection()};
    foreach (XmlElement source in children(element, "RibbonPanelSource"))
      group.RibbonRoot.RibbonPanelSources.elements.Add(panel(source));
#endif
    return group;
  }

  MacroGroup macroGroup(XmlElement element) {
    MacroGroup group = new MacroGroup {Name = element.GetAttribute("Name"), MenuMacros = new MenuMacroCollection()};
    foreach (XmlElement one in children(element, "MenuMacro")) {
      XmlElement parts = child(one, "Macro");
      MenuMacro macro = new MenuMacro {ElementID = identifier(one)};
      macro.macro = new Macro {Name = text(parts, "Name"), Command = text(parts, "Command")};
#if !LEAN
      macro.macro.HelpString = text(parts, "HelpString");
#endif
      mMacros[macro.ElementID] = macro;
      group.MenuMacros.elements.Add(macro);
    }
    return group;
  }

  PopMenu popMenu(XmlElement element) {
    PopMenu menu = new PopMenu {ElementID = identifier(element), Name = text(element, "Name"),
                                PopMenuItems = new PopMenuItemCollection(), Aliases = new AliasCollection()};
#if !LEAN
    menu.DisplayName = displayName(element);
#endif
    foreach (XmlElement alias in children(element, "Alias")) menu.Aliases.elements.Add(alias.InnerText);
    foreach (XmlNode node in element.ChildNodes) {
      if (node.Name == "PopMenuItem") menu.PopMenuItems.elements.Add(item((XmlElement)node));
      if (node.Name == "PopMenuRef")
        menu.PopMenuItems.elements.Add(new PopMenuRef {MenuReference = ((XmlElement)node).GetAttribute("pUID")});
    }
    return menu;
  }

  PopMenuItem item(XmlElement element) {
    return new PopMenuItem {ElementID = identifier(element), IsSeparator = element.GetAttribute("IsSeparator") == "true",
                            Name = text(element, "Name"), DisplayName = displayName(element),
                            MacroID = element.GetAttribute("MacroID"), find = macro};
  }

  RibbonPanelSource panel(XmlElement element) {
    RibbonPanelSource panel = new RibbonPanelSource {ElementID = identifier(element), Name = element.GetAttribute("Name"),
                                                     Text = element.GetAttribute("Text")};
    foreach (XmlElement button in children(element, "RibbonCommandButton"))
      panel.macros.elements.Add(macro(button.GetAttribute("MacroID")));
    return panel;
  }

  static Workspace workspace(XmlElement element) {
    Workspace workspace = new Workspace {Name = element.GetAttribute("Name"),
                                         WorkspacePopMenus = new WorkspacePopMenuCollection()};
    foreach (XmlElement menu in children(element, "WorkspacePopMenu"))
      workspace.WorkspacePopMenus.elements.Add(new WorkspacePopMenu {
          PopMenuID = menu.GetAttribute("PopMenuID"), group = menu.GetAttribute("MenuGroup"),
          Display = int.Parse(menu.GetAttribute("Display"))});
    return workspace;
  }

  MenuMacro macro(string identifier) {
    MenuMacro found;
    return mMacros.TryGetValue(identifier, out found) ? found : null;
  }

  static string identifier(XmlElement element) {
    return element.GetAttribute("UID");
  }

  /// The name that AutoCAD has evaluated, where the file gives one; otherwise the name without its access key.
  static string displayName(XmlElement element) {
    string name = text(element, "Name");
    return text(element, "DisplayName") ?? (name == null ? null : name.Replace("&", ""));
  }

  static string text(XmlElement parent, string name) {
    XmlElement element = child(parent, name);
    return element == null ? null : element.InnerText;
  }

  static XmlElement child(XmlElement parent, string name) {
    return parent == null ? null : parent[name];
  }

  static List<XmlElement> children(XmlElement parent, string name) {
    List<XmlElement> found = new List<XmlElement>();
    foreach (XmlNode node in parent.ChildNodes)
      if (node.Name == name) found.Add((XmlElement)node);
    return found;
  }
}

}
