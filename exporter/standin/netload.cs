using System;
using System.Reflection;
using Autodesk.AutoCAD.Runtime;

namespace Standin {

/// NETLOAD, and the commands of what it has loaded.
public static class Netload {
  /// Loads the assembly and initialises the type that it names. What that throws is swallowed, as by AutoCAD.
  public static Assembly load(string path) {
    Assembly assembly = Assembly.LoadFrom(path);
    object[] found = assembly.GetCustomAttributes(typeof(ExtensionApplicationAttribute), false);
    if (found.Length != 1) throw new InvalidOperationException(path + ": expected one ExtensionApplication");
    Type type = ((ExtensionApplicationAttribute)found[0]).type;
    IExtensionApplication extension = (IExtensionApplication)Activator.CreateInstance(type);
    try {
      extension.Initialize();
    } catch (Exception) {
    }
    return assembly;
  }

  /// Runs a command of the classes that the assembly names for it.
  public static void command(Assembly assembly, string name) {
    foreach (CommandClassAttribute commands in assembly.GetCustomAttributes(typeof(CommandClassAttribute), false))
      foreach (MethodInfo method in commands.type.GetMethods())
        foreach (CommandMethodAttribute command in method.GetCustomAttributes(typeof(CommandMethodAttribute), false))
          if (string.Equals(command.name, name, StringComparison.OrdinalIgnoreCase)) {
            run(method, name);
            return;
          }
    throw new InvalidOperationException("Unknown command \"" + name + "\".");
  }

  static void run(MethodInfo method, string name) {
    HostControl.variables["CMDNAMES"] = name;
    method.Invoke(null, null);
    HostControl.variables["CMDNAMES"] = "";
  }
}

}
