#include "looptool/Picture/PngCanvas.h"
#include "looptool/System/ToolFailure.h"

#include <cairo.h>

namespace NSLoopTool {

namespace {

constexpr double kScale = 2.0;

cairo_status_t Append(void* bytes, const unsigned char* data, unsigned int count) {
    auto& target = *static_cast<std::vector<uint8_t>*>(bytes);
    target.insert(target.end(), data, data + count);
    return CAIRO_STATUS_SUCCESS;
}

class CPngCanvas final : public ICanvas {
public:
    CPngCanvas(double width, double height)
        : fSurface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width * kScale),
                                              static_cast<int>(height * kScale)),
                   cairo_surface_destroy),
          fCairo(cairo_create(fSurface.get()), cairo_destroy) {
        cairo_scale(fCairo.get(), kScale, kScale);
    }

    void FillRectangle(SPoint corner, double width, double height, Colour colour,
                       double opacity) override {
        SetColour(colour, opacity);
        cairo_rectangle(fCairo.get(), corner.fX, corner.fY, width, height);
        cairo_fill(fCairo.get());
    }
    void FillPolygon(const std::vector<SPoint>& points, Colour colour) override {
        SetColour(colour, 1.0);
        for (const SPoint& point : points) {
            cairo_line_to(fCairo.get(), point.fX, point.fY);
        }
        cairo_close_path(fCairo.get());
        cairo_fill(fCairo.get());
    }
    void DrawLine(SPoint from, SPoint to, double width, Colour colour, double dash) override {
        SetColour(colour, 1.0);
        cairo_set_line_width(fCairo.get(), width);
        cairo_set_dash(fCairo.get(), &dash, dash > 0.0 ? 1 : 0, 0.0);
        cairo_move_to(fCairo.get(), from.fX, from.fY);
        cairo_line_to(fCairo.get(), to.fX, to.fY);
        cairo_stroke(fCairo.get());
    }
    void DrawText(SPoint baseline, const std::string& text, double size, Colour colour,
                  EAlign align, bool isBold) override {
        SetColour(colour, 1.0);
        cairo_select_font_face(fCairo.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               isBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(fCairo.get(), size);
        cairo_text_extents_t extents{};
        cairo_text_extents(fCairo.get(), text.c_str(), &extents);
        const double shift = align == EAlign::kLeft     ? 0.0
                             : align == EAlign::kMiddle ? extents.x_advance / 2.0
                                                        : extents.x_advance;
        cairo_move_to(fCairo.get(), baseline.fX - shift, baseline.fY);
        cairo_show_text(fCairo.get(), text.c_str());
    }
    std::vector<uint8_t> Finish() override {
        std::vector<uint8_t> bytes;
        const cairo_status_t status =
            cairo_surface_write_to_png_stream(fSurface.get(), Append, &bytes);
        if (status != CAIRO_STATUS_SUCCESS) {
            throw CToolFailure(std::string("cannot draw: ") + cairo_status_to_string(status));
        }
        return bytes;
    }

private:
    void SetColour(Colour colour, double opacity) {
        cairo_set_source_rgba(fCairo.get(), (colour >> 16 & 0xFF) / 255.0,
                              (colour >> 8 & 0xFF) / 255.0, (colour & 0xFF) / 255.0, opacity);
    }

    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> fSurface;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> fCairo;
};

} // namespace

bool HasCairo() {
    return true;
}

std::unique_ptr<ICanvas> MakePngCanvas(double width, double height) {
    return std::make_unique<CPngCanvas>(width, height);
}

} // namespace NSLoopTool
