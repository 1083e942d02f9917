// The handlers of the command table, one a command, by family.
#pragma once

#include "interpreter/parameters.h"
#include "interpreter/run_context.h"

namespace vaxel {

// setting_commands.cpp
void RunCouleur(RunContext& run, const Parameters& parameters);
void RunSeparateur(RunContext& run, const Parameters& parameters);
void RunZoomIni(RunContext& run, const Parameters& parameters);

// surface_commands.cpp
void RunCentreE(RunContext& run, const Parameters& parameters);
void RunCentreI(RunContext& run, const Parameters& parameters);
void RunCT(RunContext& run, const Parameters& parameters);
void RunFacteur(RunContext& run, const Parameters& parameters);
void RunFormatI(RunContext& run, const Parameters& parameters);
void RunNPage(RunContext& run, const Parameters& parameters);

// line_commands.cpp
void RunEpaisT(RunContext& run, const Parameters& parameters);
void RunPlus(RunContext& run, const Parameters& parameters);
void RunPoly(RunContext& run, const Parameters& parameters);
void RunPolyP(RunContext& run, const Parameters& parameters);
void RunTrait(RunContext& run, const Parameters& parameters);
void RunX(RunContext& run, const Parameters& parameters);

// scale_commands.cpp
void RunArc(RunContext& run, const Parameters& parameters);
void RunDecal(RunContext& run, const Parameters& parameters);
void RunDroite(RunContext& run, const Parameters& parameters);
void RunDroiteV(RunContext& run, const Parameters& parameters);
void RunExposant(RunContext& run, const Parameters& parameters);
void RunInversion(RunContext& run, const Parameters& parameters);
void RunGrad(RunContext& run, const Parameters& parameters);
void RunGrad1(RunContext& run, const Parameters& parameters);

// text_commands.cpp
void RunPolice(RunContext& run, const Parameters& parameters);
void RunTailleP(RunContext& run, const Parameters& parameters);
void RunTexte(RunContext& run, const Parameters& parameters);
void RunTexteC(RunContext& run, const Parameters& parameters);

// value_commands.cpp
void RunVal(RunContext& run, const Parameters& parameters);
void RunValD(RunContext& run, const Parameters& parameters);
void RunValR(RunContext& run, const Parameters& parameters);
void RunVal1(RunContext& run, const Parameters& parameters);
void RunVal1D(RunContext& run, const Parameters& parameters);
void RunVal1R(RunContext& run, const Parameters& parameters);

// variable_commands.cpp
void RunAssignment(RunContext& run, const Parameters& parameters);
void RunCurrentPoint(RunContext& run, const Parameters& parameters);
void RunListeVar(RunContext& run, const Parameters& parameters);

}  // namespace vaxel
