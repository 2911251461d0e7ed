using System.IO;
using System.Text;

/// Writes a customization file as the stand-in reads it.
sealed class CuiWriter {
  public const string kWorkspace = "Trial";
  const string kGroup = "TRIAL";

  readonly StringBuilder mMacros = new StringBuilder();
  readonly StringBuilder mMenus = new StringBuilder();
  readonly StringBuilder mShown = new StringBuilder();

  public void addMacro(string identifier, string name, string command) {
    mMacros.Append("<MenuMacro UID=\"" + identifier + "\"><Macro><Name>" + escaped(name) + "</Name><Command>" +
                   escaped(command) + "</Command><HelpString>Help | for " + identifier + " # </HelpString></Macro></MenuMacro>");
  }

  /// `elements`: what item(), separator() and submenu() return.
  public void addMenu(string identifier, string alias, string name, string elements) {
    mMenus.Append("<PopMenu UID=\"" + identifier + "\">" + (alias == null ? "" : "<Alias>" + alias + "</Alias>") +
                  "<Name>" + escaped(name) + "</Name>" + elements + "</PopMenu>");
  }

  public void show(string identifier, bool isShown) {
    mShown.Append("<WorkspacePopMenu PopMenuID=\"" + identifier + "\" MenuGroup=\"" + kGroup + "\" Display=\"" +
                  (isShown ? 1 : 0) + "\"/>");
  }

  public void addPanel(string identifier, string buttons) {
    mMenus.Append("<RibbonPanelSource UID=\"" + identifier + "\" Name=\"N\" Text=\"Panel\">" + buttons +
                  "</RibbonPanelSource>");
  }

  public static string item(string identifier, string macro, string name) {
    return "<PopMenuItem UID=\"" + identifier + "\" MacroID=\"" + macro + "\">" +
           (name == null ? "" : "<Name>" + escaped(name) + "</Name>") + "</PopMenuItem>";
  }

  public static string separator() {
    return "<PopMenuItem IsSeparator=\"true\"/>";
  }

  public static string submenu(string identifier) {
    return "<PopMenuRef pUID=\"" + identifier + "\"/>";
  }

  public static string button(string macro) {
    return "<RibbonCommandButton MacroID=\"" + macro + "\"/>";
  }

  public void write(string folder) {
    File.WriteAllText(Path.Combine(folder, "acad.cuix"),
                      "<CustSection><MenuGroup Name=\"" + kGroup + "\"><MacroGroup Name=\"M\">" + mMacros + "</MacroGroup>" +
                          mMenus + "</MenuGroup><Workspace Name=\"" + kWorkspace + "\">" + mShown +
                          "</Workspace></CustSection>",
                      new UTF8Encoding(false));
  }

  static string escaped(string text) {
    return text.Replace("&", "&amp;").Replace("<", "&lt;").Replace("\r", "&#13;").Replace("\n", "&#10;")
        .Replace("\t", "&#9;");
  }
}
