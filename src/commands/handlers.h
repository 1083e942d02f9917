// The handlers of the command table, one a command, by family; and what compiles the lines of those
// that read them in their own way.
#pragma once

#include <memory>
#include <string_view>

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

// control_commands.cpp
std::unique_ptr<CompiledCommand> CompileIF(std::string_view keyword, std::string_view text);
std::unique_ptr<CompiledCommand> CompileIFT(std::string_view keyword, std::string_view text);
void RunGoto(RunContext& run, const Parameters& parameters);
std::unique_ptr<CompiledCommand> CompileGoto(std::string_view keyword, std::string_view text);
void RunStop(RunContext& run, const Parameters& parameters);
void RunFichier(RunContext& run, const Parameters& parameters);
void RunOpen(RunContext& run, const Parameters& parameters);
void RunLVar(RunContext& run, const Parameters& parameters);
void RunInput(RunContext& run, const Parameters& parameters);

// sector_commands.cpp
void RunSect(RunContext& run, const Parameters& parameters);
void RunSectP(RunContext& run, const Parameters& parameters);

// shape_commands.cpp
void RunCadre(RunContext& run, const Parameters& parameters);
void RunCadreA(RunContext& run, const Parameters& parameters);
void RunCadreAP(RunContext& run, const Parameters& parameters);
void RunCadreP(RunContext& run, const Parameters& parameters);
void RunCercle(RunContext& run, const Parameters& parameters);
void RunCercleI(RunContext& run, const Parameters& parameters);
void RunCercleP(RunContext& run, const Parameters& parameters);
void RunDemiLune(RunContext& run, const Parameters& parameters);
void RunDemiLuneP(RunContext& run, const Parameters& parameters);
void RunFleche(RunContext& run, const Parameters& parameters);
void RunFlecheP(RunContext& run, const Parameters& parameters);
void RunPercer(RunContext& run, const Parameters& parameters);
void RunPercerX(RunContext& run, const Parameters& parameters);
void RunVoyant(RunContext& run, const Parameters& parameters);

// dovetail_commands.cpp
void RunQA(RunContext& run, const Parameters& parameters);
void RunQA1(RunContext& run, const Parameters& parameters);
void RunQA2(RunContext& run, const Parameters& parameters);
void RunQA12(RunContext& run, const Parameters& parameters);

// palette_commands.cpp
void RunPalCoul(RunContext& run, const Parameters& parameters);
void RunPalCoul2(RunContext& run, const Parameters& parameters);
void RunPalCoul3(RunContext& run, const Parameters& parameters);

// picture_commands.cpp
void RunImage(RunContext& run, const Parameters& parameters);

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
std::unique_ptr<CompiledCommand> CompileAssignment(std::string_view keyword, std::string_view text);
void RunCurrentPoint(RunContext& run, const Parameters& parameters);
void RunListeVar(RunContext& run, const Parameters& parameters);

}  // namespace vaxel
