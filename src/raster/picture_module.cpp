#include "raster/picture_module.h"

#include "raster/image_surface.h"
#include "raster/picture_file.h"
#include "raster/qt_gui.h"

namespace {

orvantis::DrawingSurface* MakeSurface(int width, int height) {
    orvantis::EnsureQtGui();
    return new orvantis::ImageSurface(width, height);
}

}  // namespace

extern "C" __attribute__((visibility("default")))
const orvantis::PictureModule orvantisPictureModule = {MakeSurface, orvantis::SavePng};
