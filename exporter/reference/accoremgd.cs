// What the exporter uses of AutoCAD's assembly accoremgd. Only compiled against, never shipped.
using System;
using System.Reflection;

[assembly: AssemblyVersion("19.0.0.0")]

namespace Autodesk.AutoCAD.Runtime {

[AttributeUsage(AttributeTargets.Method)]
public sealed class CommandMethodAttribute : Attribute {
  public CommandMethodAttribute(string globalName) {}
}

[AttributeUsage(AttributeTargets.Assembly)]
public sealed class CommandClassAttribute : Attribute {
  public CommandClassAttribute(Type type) {}
}

}

namespace Autodesk.AutoCAD.EditorInput {

public sealed class Editor {
  Editor() {}
  public void WriteMessage(string message) { throw null; }
}

}

namespace Autodesk.AutoCAD.ApplicationServices {

public sealed class Document {
  Document() {}
  public EditorInput.Editor Editor { get { throw null; } }
}

public sealed class DocumentCollection {
  DocumentCollection() {}
  public Document MdiActiveDocument { get { throw null; } }
}

}

namespace Autodesk.AutoCAD.ApplicationServices.Core {

public class Application {
  public static DocumentCollection DocumentManager { get { throw null; } }
  public static event EventHandler Idle { add { throw null; } remove { throw null; } }
  public static object GetSystemVariable(string name) { throw null; }
}

}
