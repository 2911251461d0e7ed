// AutoCAD as far as an assembly of its managed interface sees it: loads one as NETLOAD does, with menus from a file, is
// idle once, runs commands of the assembly, and prints what the command line shows.
//
// usage: netload_host ASSEMBLY --menu FILE.cuix [--enterprise FILE.cuix] [--workspace NAME] [--code-page N] [COMMAND...]
//
// Without --workspace the file's first one is current. The user's profile is USERPROFILE. Exit status 0; 1 when the
// assembly cannot be loaded or lacks a command; 2 for bad usage.
using System;
using System.Collections.Generic;
using System.IO;
using System.Reflection;
using System.Text;
using Autodesk.AutoCAD.Customization;
using Autodesk.AutoCAD.Runtime;

namespace Standin {

static class NetloadHost {
  static int Main(string[] arguments) {
    try {
      return run(new List<string>(arguments));
    } catch (ArgumentException error) {
      Console.Error.WriteLine("netload_host: " + error.Message);
      return 2;
    } catch (Exception error) {
      Console.Error.WriteLine("netload_host: " + error);
      return 1;
    }
  }

  static int run(List<string> arguments) {
    Console.OutputEncoding = new UTF8Encoding(false);
    HostControl.start();
    List<string> rest = takeOptions(arguments);
    if (rest.Count == 0) throw new ArgumentException("expected an assembly");
    if ((string)HostControl.variables["WSCURRENT"] == "") HostControl.variables["WSCURRENT"] = firstWorkspace();
    HostControl.variables["CMDNAMES"] = "NETLOAD";
    Assembly assembly = Netload.load(rest[0]);
    HostControl.variables["CMDNAMES"] = "";
    HostControl.idle();
    for (int i = 1; i < rest.Count; ++i) Netload.command(assembly, rest[i]);
    foreach (string text in HostControl.printed) Console.Write(text);
    return 0;
  }

  /// Of the main menu file; the exporter reports one that cannot be read.
  static string firstWorkspace() {
    try {
      string path = HostControl.variables["MENUNAME"] + ".cuix";
      foreach (Workspace workspace in new CustomizationSection(path, true).Workspaces) return workspace.Name;
    } catch (FileOpenException) {
    }
    return "";
  }

  static List<string> takeOptions(List<string> arguments) {
    List<string> rest = new List<string>();
    for (int i = 0; i < arguments.Count; ++i) {
      if (!arguments[i].StartsWith("--", StringComparison.Ordinal)) {
        rest.Add(arguments[i]);
        continue;
      }
      if (i + 1 == arguments.Count) throw new ArgumentException(arguments[i] + ": expected a value");
      set(arguments[i], arguments[i + 1]);
      ++i;
    }
    return rest;
  }

  static void set(string option, string value) {
    switch (option) {
      case "--menu":
        // AutoCAD names its main file without the extension.
        HostControl.variables["MENUNAME"] = Path.ChangeExtension(Path.GetFullPath(value), null);
        break;
      case "--enterprise":
        HostControl.variables["ENTERPRISEMENU"] = Path.GetFullPath(value);
        break;
      case "--workspace":
        HostControl.variables["WSCURRENT"] = value;
        break;
      case "--code-page":
        SystemCodePage.set(int.Parse(value));
        break;
      default:
        throw new ArgumentException("unknown option " + option);
    }
  }
}

}
