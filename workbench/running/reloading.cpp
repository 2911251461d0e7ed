#include "workbench/running/reloading.h"

#include "workbench/input_error.h"
#include "workbench/running/settings_file.h"
#include "workbench/text_input.h"
#include "workbench/text_output.h"

#include <exception>

namespace workbench {

void Reloading::load() {
  mRun.end();
  // A module that cannot be freed is still there; sending it the init message again would only hide that.
  if (!mRun.unload()) return;
  std::exception_ptr failure;
  try {
    writeChanges();
  } catch (const InputError&) {
    failure = std::current_exception();
  }
  mChanges.clear();
  mModule.load();
  mRun.begin();
  mLoaded();
  if (failure) std::rethrow_exception(failure);
}

void Reloading::writeChanges() {
  if (mChanges.empty()) return;
  const std::string name = mSettingsFile.string();
  std::string text = readBytes(mSettingsFile, "the module's settings");
  for (const ChangeSetting& change : mChanges) {
    auto changed = withSetting(text, change.key, change.value);
    if (!changed) throw InputError({name}, "a setting of that name", inQuotes(change.key));
    text = std::move(*changed);
  }
  writeFile(mSettingsFile, text);
}

}  // namespace workbench
