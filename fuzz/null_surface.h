// A surface on which nothing is drawn, so that hostile input costs the program's own work alone.
#pragma once

#include "surface/drawing_surface.h"

namespace orvantis {

class NullSurface : public DrawingSurface {
  public:
    SurfaceSize Size() const override { return {400, 300}; }
    void Clear(Colour) override {}
    void SetPen(const Pen&) override {}
    void SelectFont(const Font&) override {}
    void MoveTo(int, int) override {}
    void LineTo(int, int) override {}
    void SetPixel(int, int) override {}
    Colour GetPixel(int, int) override { return -1; }
    void Rectangle(int, int, int, int, const Brush&) override {}
    void Ellipse(int, int, int, int, const Brush&) override {}
    void Arc(int, int, int, int, double, double) override {}
    void Polygon(const std::vector<SurfacePoint>&, const Brush&, bool) override {}
    void TextOut(int, int, std::string_view, TextAlign) override {}
    SurfaceSize TextExtent(std::string_view text) override {
        return {7 * static_cast<int>(text.size()), 13};
    }
    bool FloodFill(int, int, Colour, Colour) override { return false; }
    void ClipToRectangle(int, int, int, int) override {}
    void ClipToEllipse(int, int, int, int) override {}
    void ClearClip() override {}
    void CopyImage(Image&) override {}
    void PutImage(const Image&) override {}
    void Refresh() override {}
};

}  // namespace orvantis
