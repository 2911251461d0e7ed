// What the exporter uses of AutoCAD's assembly Acdbmgd; the stand-in of that assembly is made of it, too. Never shipped.
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
  public readonly Type type;  // for the stand-in's host only

  public ExtensionApplicationAttribute(Type type) {
    this.type = type;
  }
}

}
