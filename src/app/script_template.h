// Templates of new scripts: files with complete dials, in the folder "templates" beside the program or in
// that of its data, where users put their own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "base/result.h"

namespace vaxel {

struct ScriptTemplate {
  std::string FileName;  // with its folders
  std::string Name;      // in the language of menus and help
};

// All "*.dat" in these folders, by their names; of two files with one name the one of the data counts.
std::vector<ScriptTemplate> FindTemplates(const AppContext& app);

// The template's script in the language of menus and help. It fails as LoadScript does.
Result<std::string> TextOf(const ScriptTemplate& chosen, const AppContext& app);

// The script that is made of a template's text, whose lines end in LF, for a language ("fr"). A line "'fr:…"
// is what follows the colon, for French alone; where a template has no line of the language, the English ones
// count. So the file itself is a script, without its words.
std::string InLanguage(std::string_view text, std::string_view code);

// What a script calls itself: the comment that it begins with, up to a ":" or to the end of a sentence; empty
// when it begins with none.
std::string NameIn(std::string_view script);

}  // namespace vaxel
