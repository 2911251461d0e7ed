using System;
using Autodesk.AutoCAD.Runtime;

namespace MenuScribe {

/// What AutoCAD finds in the assembly when it loads it. Main thread.
public sealed class Extension : IExtensionApplication {
  /// AutoCAD calls this once a session, inside the NETLOAD command: the menus are read later, at idle. What is thrown
  /// here vanishes, and the assembly could not be loaded again in the session.
  public void Initialize() {
    try {
      Exporter.ofSession().start();
    } catch (Exception failure) {
      FailureLog.write("Initialize", failure);
    }
  }

  public void Terminate() {}
}

public sealed class Commands {
  /// Rewrites the menu file and reports its contents on the command line.
  [CommandMethod("LM_EXPORT_MENU")]
  public static void exportMenu() {
    try {
      Exporter.ofSession().exportOnCommand();
    } catch (Exception failure) {
      FailureLog.write("LM_EXPORT_MENU", failure);
    }
  }
}

}
