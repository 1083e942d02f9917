// The dialog that offers templates of new scripts, with what each of them draws.
#pragma once

#include <optional>
#include <vector>

#include "app/app_context.h"
#include "app/script_template.h"

namespace vaxel {

class TemplateChoice {
 public:
  // The context must outlive it.
  explicit TemplateChoice(AppContext& app) : app_(app) {}

  // The template that the user has chosen. There is none when the dialog was cancelled; when there are no
  // templates, the user is told.
  std::optional<ScriptTemplate> Ask();

 private:
  PreviewPages Draw(const ScriptTemplate& drawn);
  PreviewPages Run(const std::string& script);

  AppContext& app_;
};

}  // namespace vaxel
