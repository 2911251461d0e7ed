// Stand-in of AutoCAD's assembly accoremgd: one drawing or none, a command line that is written down, system variables,
// idle times that a program raises. It holds its callers to the main thread.
using System;
using System.Collections.Generic;
using System.Reflection;
using System.Threading;

[assembly: AssemblyVersion("19.0.0.0")]

namespace Autodesk.AutoCAD.Runtime {

[AttributeUsage(AttributeTargets.Method)]
public sealed class CommandMethodAttribute : Attribute {
  public readonly string name;

  public CommandMethodAttribute(string globalName) {
    name = globalName;
  }
}

[AttributeUsage(AttributeTargets.Assembly)]
public sealed class CommandClassAttribute : Attribute {
  public readonly Type type;

  public CommandClassAttribute(Type type) {
    this.type = type;
  }
}

}

namespace Autodesk.AutoCAD.EditorInput {

public sealed class Editor {
  public void WriteMessage(string message) {
    Standin.HostControl.requireMainThread("Editor.WriteMessage");
    if (Standin.HostControl.isPrintingBroken) throw new InvalidOperationException("eNotApplicable");
    Standin.HostControl.printed.Add(message);
  }
}

}

namespace Autodesk.AutoCAD.ApplicationServices {

public sealed class Document {
  readonly EditorInput.Editor mEditor = new EditorInput.Editor();

  public EditorInput.Editor Editor { get { return mEditor; } }
}

public sealed class DocumentCollection {
  readonly Document mDocument = new Document();

  public Document MdiActiveDocument {
    get {
      Standin.HostControl.requireMainThread("DocumentCollection.MdiActiveDocument");
      return Standin.HostControl.isDrawingOpen ? mDocument : null;
    }
  }
}

}

namespace Autodesk.AutoCAD.ApplicationServices.Core {

public class Application {
  static readonly DocumentCollection sDocuments = new DocumentCollection();

  public static event EventHandler Idle;

  public static DocumentCollection DocumentManager { get { return sDocuments; } }

  public static object GetSystemVariable(string name) {
    Standin.HostControl.requireMainThread("Application.GetSystemVariable");
    object value;
    if (Standin.HostControl.variables.TryGetValue(name, out value)) return value;
    throw new ArgumentException("eInvalidInput");
  }

  internal static void raiseIdle() {
    EventHandler handlers = Idle;
    if (handlers != null) handlers(null, EventArgs.Empty);
  }

  internal static void forgetHandlers() {
    Idle = null;
  }
}

}

namespace Standin {

/// The controls of the stand-in, for programs and tests.
public static class HostControl {
  static int sMainThread = Thread.CurrentThread.ManagedThreadId;

  public static readonly Dictionary<string, object> variables = new Dictionary<string, object>();
  public static readonly List<string> printed = new List<string>();
  public static bool isDrawingOpen;
  public static bool isPrintingBroken;

  /// AutoCAD before its first command: a drawing is open, no menus are named.
  public static void start() {
    sMainThread = Thread.CurrentThread.ManagedThreadId;
    variables.Clear();
    variables["MENUNAME"] = "";
    variables["ENTERPRISEMENU"] = ".";
    variables["WSCURRENT"] = "";
    variables["CMDNAMES"] = "";
    printed.Clear();
    isDrawingOpen = true;
    isPrintingBroken = false;
    Autodesk.AutoCAD.ApplicationServices.Core.Application.forgetHandlers();
  }

  /// AutoCAD has nothing to do.
  public static void idle() {
    Autodesk.AutoCAD.ApplicationServices.Core.Application.raiseIdle();
  }

  internal static void requireMainThread(string member) {
    if (Thread.CurrentThread.ManagedThreadId != sMainThread)
      throw new InvalidOperationException(member + " was called off the main thread");
  }
}

}
