#include "raster/picture_module.h"

#include "raster/image_surface.h"
#include "raster/page_file.h"
#include "raster/page_surface.h"
#include "raster/picture_file.h"
#include "raster/qt_gui.h"

namespace {

orvantis::DrawingSurface* MakeSurface(int width, int height) {
    orvantis::EnsureQtGui();
    return new orvantis::ImageSurface(width, height);
}

orvantis::DrawingSurface* MakePage(int width, int height) {
    constexpr double kDotsPerInch = 96;
    orvantis::EnsureQtGui();
    return new orvantis::PageSurface(width, height, kDotsPerInch, orvantis::PageFloods::Beneath);
}

bool SavePageAsPdf(std::string_view nativePath, orvantis::DrawingSurface& page) {
    return orvantis::SavePdf(nativePath, static_cast<orvantis::PageSurface&>(page).Record());
}

bool SavePageAsSvg(std::string_view nativePath, orvantis::DrawingSurface& page) {
    return orvantis::SaveSvg(nativePath, static_cast<orvantis::PageSurface&>(page).Record());
}

}  // namespace

extern "C" __attribute__((visibility("default")))
const orvantis::PictureModule orvantisPictureModule = {MakeSurface, orvantis::SavePng, MakePage,
                                                       SavePageAsPdf, SavePageAsSvg};
