// What keeps others from running their code in this program.
#pragma once

#include "winbase/handles.h"

namespace vaxel {

// To be called first. From then on libraries that are loaded by their bare name come from the folder of the
// system, never from the current one, which is that of somebody's script, and a heap that has been written
// over ends the program at once.
void GuardProcess();

// Loads a library of the system; null where there is none of this name.
UniqueLibrary LoadSystemLibrary(const wchar_t* name);

}  // namespace vaxel
