using System;
using System.Collections.Generic;
using System.IO;
using System.Text;
using MenuScribe;
using Standin;

/// A folder with a user's profile and customization files, and the exporter at work on them.
sealed class Menus : IDisposable {
  public readonly string folder;
  readonly string mProfile = Environment.GetEnvironmentVariable("USERPROFILE");

  public Menus() {
    folder = Path.Combine(Path.GetTempPath(), "menus_" + Guid.NewGuid().ToString("N"));
    Directory.CreateDirectory(Path.Combine(folder, "Lumetrapad", "Applications"));
    Environment.SetEnvironmentVariable("USERPROFILE", folder);
    HostControl.variables["MENUNAME"] = file("acad");
  }

  public void Dispose() {
    Environment.SetEnvironmentVariable("USERPROFILE", mProfile);
    Directory.Delete(folder, true);
  }

  public string file(string name) {
    return Path.Combine(folder, name);
  }

  public string menuFile { get { return Path.Combine(folder, "Lumetrapad", "Applications", "autocad.mnu"); } }
  public string log { get { return Path.Combine(folder, "Lumetrapad", "menu_exporter_log.txt"); } }

  /// Writes a customization file: what is in its menu group, and what after it.
  public void write(string name, string group, string inGroup, string afterGroup = "") {
    File.WriteAllText(file(name), "<CustSection><MenuGroup Name=\"" + group + "\">" + inGroup + "</MenuGroup>" +
                                      afterGroup + "</CustSection>");
  }

  public static string macro(string identifier, string name, string command, string help = "") {
    return "<MacroGroup Name=\"M\"><MenuMacro UID=\"" + identifier + "\"><Macro><Name>" + name + "</Name><Command>" +
           command + "</Command><HelpString>" + help + "</HelpString></Macro></MenuMacro></MacroGroup>";
  }

  /// A menu with items "UID MacroID", references "->PM_X" and separators "--".
  public static string menu(string identifier, string alias, string name, params string[] elements) {
    StringBuilder text = new StringBuilder("<PopMenu UID=\"" + identifier + "\">");
    if (alias.Length != 0) text.Append("<Alias>" + alias + "</Alias>");
    text.Append("<Name>" + name + "</Name>");
    foreach (string element in elements) text.Append(menuElement(element));
    return text.Append("</PopMenu>").ToString();
  }

  static string menuElement(string element) {
    if (element == "--") return "<PopMenuItem UID=\"S\" IsSeparator=\"true\"/>";
    if (element.StartsWith("->")) return "<PopMenuRef pUID=\"" + element.Substring(2) + "\"/>";
    string[] parts = element.Split(new[] {' '}, 3);
    return "<PopMenuItem UID=\"" + parts[0] + "\" MacroID=\"" + parts[1] + "\">" + (parts.Length > 2 ? parts[2] : "") +
           "</PopMenuItem>";
  }

  public static string workspace(string name, params string[] menus) {
    StringBuilder text = new StringBuilder("<Workspace Name=\"" + name + "\">");
    foreach (string menu in menus) {
      string[] parts = menu.Split(' ');
      text.Append("<WorkspacePopMenu PopMenuID=\"" + parts[1] + "\" MenuGroup=\"" + parts[0] + "\" Display=\"" +
                  parts[2] + "\"/>");
    }
    return text.Append("</Workspace>").ToString();
  }

  /// What an export takes from the files as they are: "LABEL=COMMAND" each.
  public List<string> items(Problems problems) {
    Members members = new Members(problems);
    List<string> found = new List<string>();
    foreach (MenuItem item in new MenuReader(new CuiFiles(problems, members), members, problems).items) {
      List<string> labels = new List<string>();
      foreach (Caption caption in item.path) labels.Add(caption.text);
      found.Add(string.Join(" > ", labels.ToArray()) + "=" + item.command);
    }
    return found;
  }

  /// The same; a problem is a failure.
  public List<string> items() {
    Problems problems = new Problems();
    List<string> found = items(problems);
    Checks.equal(problems.summary(), "", "problems");
    return found;
  }

  public List<string> identifiers() {
    Problems problems = new Problems();
    Members members = new Members(problems);
    List<string> found = new List<string>();
    foreach (MenuItem item in new MenuReader(new CuiFiles(problems, members), members, problems).items)
      found.Add(item.identifier);
    return found;
  }
}
