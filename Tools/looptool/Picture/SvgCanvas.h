#pragma once

#include "looptool/Picture/ICanvas.h"

#include <memory>

namespace NSLoopTool {

/// A picture in SVG 1.1, sharp at any size.
std::unique_ptr<ICanvas> MakeSvgCanvas(double width, double height);

} // namespace NSLoopTool
