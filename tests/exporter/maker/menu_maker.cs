// Makes menus, and the menu files that the exporter writes for them, for tests that read those with the module.
//
// usage: menu_maker table TABLE FOLDER          one menu: a macro for each line of the table
//        menu_maker random COUNT SEED FOLDER    random menus in FOLDER/0, FOLDER/1, ...
//
// A folder gets acad.cuix and autocad.mnu; a random one also `expected`, a line for each entry: label's number, TAB, macro.
using System;
using System.Collections.Generic;
using System.IO;
using System.Text;
using MenuScribe;
using Standin;

static class MenuMaker {
  static int Main(string[] arguments) {
    if (arguments.Length == 3 && arguments[0] == "table")
      makeTable(arguments[1], arguments[2]);
    else if (arguments.Length == 4 && arguments[0] == "random")
      makeRandom(int.Parse(arguments[1]), int.Parse(arguments[2]), arguments[3]);
    else
      return 2;
    return 0;
  }

  static void makeTable(string table, string folder) {
    CuiWriter menu = new CuiWriter();
    int number = 0;
    foreach (string line in File.ReadAllLines(table, Encoding.UTF8)) {
      if (line.StartsWith("#", StringComparison.Ordinal)) continue;
      string macro = line.Substring(0, line.IndexOf('\t')).Replace('\u240d', '\r').Replace('\u240a', '\n');
      menu.addMacro("ID_" + number, "Row " + number, macro);
      ++number;
    }
    menu.write(folder);
    export(folder, Encoding.GetEncoding(1252));
  }

  static void makeRandom(int count, int seed, string folder) {
    for (int i = 0; i < count; ++i) {
      Directory.CreateDirectory(Path.Combine(folder, i.ToString()));
      RandomMenu menu = new RandomMenu(new RandomNumbers(seed + i));
      menu.write(Path.Combine(folder, i.ToString()));
      export(Path.Combine(folder, i.ToString()), menu.encoding);
    }
  }

  /// Writes the file as the exporter does.
  static void export(string folder, Encoding encoding) {
    HostControl.start();
    HostControl.variables["MENUNAME"] = Path.Combine(folder, "acad");
    HostControl.variables["WSCURRENT"] = CuiWriter.kWorkspace;
    Problems problems = new Problems();
    File.WriteAllBytes(Path.Combine(folder, "autocad.mnu"), new Export(encoding, problems).contents);
    if (problems.count != 0) throw new InvalidOperationException(problems.summary());
  }
}
