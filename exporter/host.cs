using System;
using System.Runtime.CompilerServices;
using Autodesk.AutoCAD.ApplicationServices;
using Autodesk.AutoCAD.ApplicationServices.Core;

namespace MenuScribe {

/// Calls of AutoCAD that do not concern its menus. Main thread. Whatever AutoCAD throws or lacks ends here: each risky call
/// is in a method of its own, because a missing member is reported when the method that names it is entered.
static class Host {
  public static void onIdle(EventHandler handler) {
    Application.Idle += handler;
  }

  /// The text of a system variable; empty when there is none of that name.
  public static string variable(string name) {
    try {
      return readVariable(name) as string ?? "";
    } catch (Exception) {
      return "";
    }
  }

  /// Whether a command waits or runs; also without a drawing, when there is none to ask about.
  public static bool isInCommand() {
    return variable("CMDNAMES").Length != 0;
  }

  /// Prints a line on the command line; false when there is none to print on, as without a drawing.
  public static bool print(string line) {
    try {
      return write("\n" + line + "\n");
    } catch (Exception) {
      return false;
    }
  }

  [MethodImpl(MethodImplOptions.NoInlining)]
  static object readVariable(string name) {
    return Application.GetSystemVariable(name);
  }

  [MethodImpl(MethodImplOptions.NoInlining)]
  static bool write(string text) {
    Document document = Application.DocumentManager.MdiActiveDocument;
    if (document == null) return false;
    // The overload without arguments: the other one would take braces in the text for places to fill.
    document.Editor.WriteMessage(text);
    return true;
  }
}

}
