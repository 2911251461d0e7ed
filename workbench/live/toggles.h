/// The module's four switches, as far as it shows them: in its settings file when it is loaded, and on the
/// command line whenever one is switched. Main thread only.
#ifndef WORKBENCH_TOGGLES_H
#define WORKBENCH_TOGGLES_H

#include <array>
#include <string>
#include <string_view>

namespace workbench {

class Toggles {
 public:
  struct Toggle {
    const char* command;  ///< that switches it
    const char* setting;  ///< that it begins with; null: off
    const char* printed;  ///< what the module prints before "on" or "off"
  };
  static constexpr std::array<Toggle, 4> kToggles = {
      {{"LM_Toggle_Rotation_Center", "toggleRotationCenter", "=> Selection as Rotation Center:"},
       {"LM_Toggle_Rotation_Axis", "toggleRotationAxis", "=> Selected Line as Rotation Axis:"},
       {"LM_Toggle_Scroll_Mode", "scrollTreeAndList", "=> Scroll Trees and Lists:"},
       {"LM_Toggle_Object_Move_Mode", nullptr, "=> Move Selected Object:"}}};

  /// The module has been loaded with this settings file.
  void loaded(std::string_view settings);
  /// The module has printed this.
  void printed(std::string_view text);

  bool isOn(std::size_t index) const { return mIsOn.at(index); }

 private:
  std::array<bool, kToggles.size()> mIsOn{};
};

}  // namespace workbench

#endif
