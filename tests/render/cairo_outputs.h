// Display lists as the outputs show them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "drawing/display_list.h"
#include "tests/render/cairo_picture.h"

namespace vaxel::test {

// Where the files of the measured outputs are kept.
std::filesystem::path MeasuredFolder();

// Runs a shell command, which must succeed.
void Execute(const std::string& command);
// The same, and what it prints.
std::string OutputOf(const std::string& command);

std::filesystem::path WriteSvgPage(const DisplayList& list, const std::string& name, std::size_t page = 0);

// One page through each format; the name is that of the files.
Picture ThroughPdf(const DisplayList& list, const std::string& name, double dpi, std::size_t page = 0);
Picture ThroughSvg(const DisplayList& list, const std::string& name, double dpi, std::size_t page = 0);
Picture ThroughPng(const DisplayList& list, const std::string& name, double dpi, std::size_t page = 0);

}  // namespace vaxel::test
