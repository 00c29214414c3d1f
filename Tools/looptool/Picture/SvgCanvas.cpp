#include "looptool/Picture/SvgCanvas.h"

#include <charconv>
#include <cmath>

namespace NSLoopTool {

namespace {

// To a tenth of a pixel.
std::string Number(double value) {
    char text[64];
    const double rounded = std::round(value * 10.0) / 10.0 + 0.0;
    return {text, std::to_chars(text, text + sizeof text, rounded).ptr};
}

std::string Hex(Colour colour) {
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4) {
        text += "0123456789abcdef"[colour >> shift & 0xF];
    }
    return text;
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        switch (letter) {
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '&':
            escaped += "&amp;";
            break;
        default:
            escaped += letter;
        }
    }
    return escaped;
}

class CSvgCanvas final : public ICanvas {
public:
    CSvgCanvas(double width, double height) {
        const std::string size = Number(width) + "\" height=\"" + Number(height);
        fText = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + size + "\" viewBox=\"0 0 " +
                Number(width) + " " + Number(height) + "\" font-family=\"sans-serif\">\n";
    }

    void FillRectangle(SPoint corner, double width, double height, Colour colour,
                       double opacity) override {
        fText += "<rect" + Place("x", "y", corner) + " width=\"" + Number(width) + "\" height=\"" +
                 Number(height) + "\" fill=\"" + Hex(colour) + "\"" +
                 (opacity < 1.0 ? " fill-opacity=\"" + Number(opacity) + "\"" : "") + "/>\n";
    }
    void FillPolygon(const std::vector<SPoint>& points, Colour colour) override {
        fText += "<path fill=\"" + Hex(colour) + "\" d=\"M";
        for (const SPoint& point : points) {
            fText += Number(point.fX) + "," + Number(point.fY) + " ";
        }
        fText += "Z\"/>\n";
    }
    void DrawLine(SPoint from, SPoint to, double width, Colour colour, double dash) override {
        fText += "<line" + Place("x1", "y1", from) + Place("x2", "y2", to) + " stroke=\"" +
                 Hex(colour) + "\" stroke-width=\"" + Number(width) + "\"" +
                 (dash > 0.0 ? " stroke-dasharray=\"" + Number(dash) + "\"" : "") + "/>\n";
    }
    void DrawText(SPoint baseline, const std::string& text, double size, Colour colour,
                  EAlign align, bool isBold) override {
        const char* const anchor = align == EAlign::kLeft     ? "start"
                                   : align == EAlign::kMiddle ? "middle"
                                                              : "end";
        fText += "<text" + Place("x", "y", baseline) + " font-size=\"" + Number(size) +
                 "\" fill=\"" + Hex(colour) + "\" text-anchor=\"" + anchor + "\"" +
                 (isBold ? " font-weight=\"bold\"" : "") + ">" + Escaped(text) + "</text>\n";
    }
    std::vector<uint8_t> Finish() override {
        fText += "</svg>\n";
        return {fText.begin(), fText.end()};
    }

private:
    static std::string Place(const char* x, const char* y, SPoint point) {
        return std::string(" ") + x + "=\"" + Number(point.fX) + "\" " + y + "=\"" +
               Number(point.fY) + "\"";
    }

    std::string fText;
};

} // namespace

std::unique_ptr<ICanvas> MakeSvgCanvas(double width, double height) {
    return std::make_unique<CSvgCanvas>(width, height);
}

} // namespace NSLoopTool
