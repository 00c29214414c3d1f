#pragma once

#include "looptool/Picture/ICanvas.h"

#include <memory>

namespace NSLoopTool {

/// Whether the program was built with cairo.
bool HasCairo();

/// A picture in PNG, two pixels of the file for each of the canvas. CToolFailure without cairo.
std::unique_ptr<ICanvas> MakePngCanvas(double width, double height);

} // namespace NSLoopTool
