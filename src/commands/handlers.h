// The handlers of the command table, one a command, by family; and the compilers of those commands that read
// their lines in their own way.
#pragma once

#include <memory>
#include <string_view>

#include "interpreter/parameters.h"
#include "interpreter/run_context.h"

namespace vaxel {

using Handler = void(RunContext& run, const Parameters& parameters);
using Compiler = std::unique_ptr<CompiledCommand>(std::string_view keyword, std::string_view text);

// setting_commands.cpp
Handler RunCouleur;
Handler RunSeparateur;
Handler RunZoomIni;

// surface_commands.cpp
Handler RunCentreE;
Handler RunCentreI;
Handler RunCT;
Handler RunFacteur;
Handler RunFormatI;
Handler RunNPage;

// line_commands.cpp
Handler RunEpaisT;
Handler RunPlus;
Handler RunPoly;
Handler RunPolyP;
Handler RunTrait;
Handler RunX;

// scale_commands.cpp
Handler RunArc;
Handler RunDecal;
Handler RunDroite;
Handler RunDroiteV;
Handler RunExposant;
Handler RunInversion;
Handler RunGrad;
Handler RunGrad1;

// scale_law_commands.cpp
Handler RunEchelle;
Compiler CompileEchelle;
Handler RunFormatV;

// series_commands.cpp
Handler RunGradV;
Handler RunValV;
Handler RunValVD;
Handler RunValVR;

// pointer_commands.cpp
Handler RunAiguille;
Handler RunPosV;

// control_commands.cpp
Compiler CompileIF;
Compiler CompileIFT;
Compiler CompileIFNDEF;
Handler RunGoto;
Compiler CompileGoto;
Handler RunStop;
Handler RunFichier;
Handler RunOpen;
Handler RunLVar;
Handler RunInput;

// sector_commands.cpp
Handler RunSect;
Handler RunSectP;

// shape_commands.cpp
Handler RunCadre;
Handler RunCadreA;
Handler RunCadreAP;
Handler RunCadreP;
Handler RunCercle;
Handler RunCercleI;
Handler RunCercleP;
Handler RunDemiLune;
Handler RunDemiLuneP;
Handler RunFleche;
Handler RunFlecheP;
Handler RunPercer;
Handler RunPercerX;
Handler RunVoyant;

// dovetail_commands.cpp
Handler RunQA;
Handler RunQA1;
Handler RunQA2;
Handler RunQA12;

// loop_commands.cpp
Compiler CompilePour;
Compiler CompileSuivant;

// palette_commands.cpp
Handler RunPalCoul;
Handler RunPalCoul2;
Handler RunPalCoul3;

// picture_commands.cpp
Handler RunImage;

// text_commands.cpp
Handler RunPolice;
Handler RunTailleP;
Handler RunTexte;
Handler RunTexteC;

// value_commands.cpp
Handler RunVal;
Handler RunValD;
Handler RunValR;
Handler RunVal1;
Handler RunVal1D;
Handler RunVal1R;

// variable_commands.cpp
Compiler CompileAssignment;
Handler RunCurrentPoint;
Handler RunListeVar;

}  // namespace vaxel
