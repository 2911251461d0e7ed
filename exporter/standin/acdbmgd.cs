// Stand-in of AutoCAD's assembly Acdbmgd.
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
  public readonly Type type;

  public ExtensionApplicationAttribute(Type type) {
    this.type = type;
  }
}

}
