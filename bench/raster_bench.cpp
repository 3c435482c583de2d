// What the drawing surface costs, at the size of a full screen. The copy of one stored picture is
// the yardstick of all of them.
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "raster/image_surface.h"
#include "raster/picture_file.h"
#include "session/tables.h"

namespace orvantis {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr double kRadians = 3.14159265358979323846 / 180;

void PutStoredImage(benchmark::State& state) {
    ImageSurface surface(kWidth, kHeight);
    Image image;
    surface.Clear(0xC0A060);
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) surface.PutImage(image);
}
BENCHMARK(PutStoredImage)->Name("raster/put one stored image down")->Unit(benchmark::kMillisecond);

void KeepImage(benchmark::State& state) {
    ImageSurface surface(kWidth, kHeight);
    Image image;
    for ([[maybe_unused]] auto _ : state) surface.CopyImage(image);
}
BENCHMARK(KeepImage)->Name("raster/keep the image")->Unit(benchmark::kMillisecond);

void FloodWhole(benchmark::State& state) {
    ImageSurface surface(kWidth, kHeight);
    surface.Clear(0x00C000);
    Colour colour = 0xFF0000;
    for ([[maybe_unused]] auto _ : state) {
        surface.FloodFill(kWidth / 2, kHeight / 2, colour, 0);
        colour ^= 0x80;
    }
}
BENCHMARK(FloodWhole)->Name("raster/flood the whole picture")->Unit(benchmark::kMillisecond);

// As many steps as a world at the finest precision has, each a pixel or two long.
void ShortLines(benchmark::State& state) {
    std::mt19937 random(1);
    std::vector<SurfacePoint> points;
    SurfacePoint place{kWidth / 2, kHeight / 2};
    for (int i = 0; i < 250000; ++i) {
        place.x += static_cast<int>(random() % 5) - 2;
        place.y += static_cast<int>(random() % 5) - 2;
        points.push_back(place);
    }
    ImageSurface surface(kWidth, kHeight);
    surface.ClipToRectangle(20, 20, kWidth - 20, kHeight - 20);
    for ([[maybe_unused]] auto _ : state) {
        surface.MoveTo(points[0].x, points[0].y);
        for (const SurfacePoint& point : points) surface.LineTo(point.x, point.y);
    }
}
BENCHMARK(ShortLines)->Name("raster/250000 short lines")->Unit(benchmark::kMillisecond);

// Half a circle 90 degrees from a point of the sphere, on a map of the world.
std::vector<SurfacePoint> HorizonCurve(int body, int half) {
    std::vector<SurfacePoint> curve;
    const double tilt = (66 + 2.3 * body) * kRadians;
    for (int i = 0; i <= 90; ++i) {
        const double u = (2.0 * i - 90 + 180 * half) * kRadians;
        const double latitude = std::asin(std::sin(tilt) * std::sin(u)) / kRadians;
        const double longitude = std::atan2(std::cos(tilt) * std::sin(u), std::cos(u)) / kRadians;
        curve.push_back(
            {static_cast<int>(std::fmod(longitude + 540 + 36 * body, 360) * kWidth / 360),
             static_cast<int>((90 - latitude) * kHeight / 180)});
    }
    return curve;
}

// The lines of ten bodies: a meridian each for culmination and anticulmination, a curve each for
// rising and setting, in the styles that these have.
void ChartLines(benchmark::State& state) {
    ImageSurface surface(kWidth, kHeight);
    surface.Clear(0xC0A060);
    surface.ClipToRectangle(24, 24, kWidth - 24, kHeight - 24);
    const auto penOf = [](LineDash dash) {
        Pen pen;
        pen.dash = dash;
        pen.colour = 0x00FFFF;
        pen.smooth = true;
        return pen;
    };
    std::vector<std::vector<SurfacePoint>> curves(20);
    for (int line = 0; line < 20; ++line) curves[line] = HorizonCurve(line / 2, line % 2);
    for ([[maybe_unused]] auto _ : state) {
        for (int line = 0; line < 20; ++line) {
            surface.SetPen(penOf(line % 2 == 0 ? LineDash::Solid : LineDash::Dot));
            surface.MoveTo(100 + 80 * line, 0);
            surface.LineTo(100 + 80 * line, kHeight);
            surface.SetPen(penOf(LineDash::Solid));
            surface.MoveTo(curves[line][0].x, curves[line][0].y);
            int last = curves[line][0].x;
            for (const SurfacePoint& point : curves[line]) {
                // Over the edge of the map the curve goes on at the other side.
                if (std::abs(point.x - last) > kWidth / 2) surface.MoveTo(point.x, point.y);
                surface.LineTo(point.x, point.y);
                last = point.x;
            }
        }
    }
}
BENCHMARK(ChartLines)->Name("raster/lines of ten bodies")->Unit(benchmark::kMillisecond);

void Labels(benchmark::State& state) {
    ImageSurface surface(kWidth, kHeight);
    surface.SelectFont({std::string(kGlyphFontName), 9, false, false});
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < 100; ++i) {
            const std::string glyph(1, PointGlyph(static_cast<std::int16_t>(1 + i % 36)));
            const SurfaceSize size = surface.TextExtent(glyph);
            surface.Ellipse(i * 18, 300, i * 18 + size.width + 9, 300 + size.height + 4,
                            {FillKind::Solid, 0x00FFFF});
            surface.TextOut(i * 18 + 9, 302, glyph, TextAlign::Centre);
        }
    }
}
BENCHMARK(Labels)->Name("raster/100 labels in ellipses")->Unit(benchmark::kMillisecond);

void WriteMapPng(benchmark::State& state) {
    Image image;
    ImageSurface surface(kWidth, kHeight);
    surface.Clear(0x008000);
    for (int i = 0; i < 400; ++i) {
        surface.Ellipse(i * 37 % kWidth, i * 91 % kHeight, i * 37 % kWidth + 80,
                        i * 91 % kHeight + 50, {FillKind::Solid, 0xC00000});
    }
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) SavePng("/dev/shm/orvantis-bench.png", image);
}
BENCHMARK(WriteMapPng)->Name("raster/write the picture as PNG")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvantis
