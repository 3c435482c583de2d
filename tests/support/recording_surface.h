// A surface for tests and fuzzing: records every call as a line of text, and keeps a small real
// picture of unsmoothed lines and floods so that GetPixel and FloodFill answer truly.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "surface/drawing_surface.h"

namespace orvantis {

class RecordingSurface : public DrawingSurface {
  public:
    RecordingSurface(int width, int height);

    SurfaceSize Size() const override;
    void Clear(Colour colour) override;
    void SetPen(const Pen& pen) override;
    void SelectFont(const Font& font) override;
    void MoveTo(int x, int y) override;
    void LineTo(int x, int y) override;
    void SetPixel(int x, int y) override;
    Colour GetPixel(int x, int y) override;
    void Rectangle(int left, int top, int right, int bottom, const Brush& brush) override;
    void Ellipse(int left, int top, int right, int bottom, const Brush& brush) override;
    void Arc(int left, int top, int right, int bottom, double startDegrees,
             double spanDegrees) override;
    void Polygon(const std::vector<SurfacePoint>& points, const Brush& brush,
                 bool outline) override;
    void TextOut(int x, int y, std::string_view text, TextAlign align) override;
    SurfaceSize TextExtent(std::string_view text) override;
    bool FloodFill(int x, int y, Colour colour, Colour border) override;
    void ClipToRectangle(int left, int top, int right, int bottom) override;
    void ClipToEllipse(int left, int top, int right, int bottom) override;
    void ClearClip() override;
    void CopyImage(Image& image) override;
    void PutImage(const Image& image) override;
    void Refresh() override;

    /// Gives the picture another size; it is blank then, and the clip is the whole of it.
    void Resize(int width, int height);

    bool recording = true;         ///< false: the picture is kept, the text isn't
    std::vector<std::string> log;  ///< one line a call, e.g. "LineTo 10 20"
    std::function<void(const std::string& line)> onCall;  ///< called with each line; may be empty
    int charWidth = 7;                                    ///< what TextExtent answers for each byte
    int charHeight = 13;                                  ///< and for a line

    /// Lines of the log that begin with a word.
    std::vector<std::string> Calls(std::string_view word) const;

  private:
    void Note(std::string line);
    void Plot(int x, int y);
    bool InClip(int x, int y) const;

    int width_;
    int height_;
    std::vector<Colour> pixels_;
    Pen pen_;
    int x_ = 0;
    int y_ = 0;
    bool ellipseClip_ = false;
    int clipLeft_ = 0;
    int clipTop_ = 0;
    int clipRight_ = 0;
    int clipBottom_ = 0;
};

}  // namespace orvantis
