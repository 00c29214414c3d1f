#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

struct SPoint {
    double fX = 0.0;
    double fY = 0.0;
};

/// Red, green and blue, eight bits each: 0xRRGGBB.
using Colour = uint32_t;

enum class EAlign { kLeft, kMiddle, kRight };

/// What a picture is drawn on. Units are pixels, y runs down.
class ICanvas {
public:
    virtual ~ICanvas() = default;

    virtual void FillRectangle(SPoint corner, double width, double height, Colour colour,
                               double opacity) = 0;
    /// Closed from the last point to the first.
    virtual void FillPolygon(const std::vector<SPoint>& points, Colour colour) = 0;
    /// Dashes of that many pixels; 0 for a whole line.
    virtual void DrawLine(SPoint from, SPoint to, double width, Colour colour, double dash) = 0;
    /// `baseline` is where the text stands; `text` has passed SafeText.
    virtual void DrawText(SPoint baseline, const std::string& text, double size, Colour colour,
                          EAlign align, bool isBold) = 0;
    /// The bytes of the picture's file. Nothing is drawn afterwards.
    virtual std::vector<uint8_t> Finish() = 0;
};

} // namespace NSLoopTool
