// What the exporter uses of AutoCAD's assembly Acdbmgd. Only compiled against, never shipped.
using System;
using System.Reflection;

[assembly: AssemblyVersion("19.0.0.0")]

namespace Autodesk.AutoCAD.Runtime {

public interface IExtensionApplication {
  void Initialize();
  void Terminate();
}

[AttributeUsage(AttributeTargets.Assembly)]
public sealed class ExtensionApplicationAttribute : Attribute {
  public ExtensionApplicationAttribute(Type type) {}
}

}
