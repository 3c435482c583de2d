#include "text/rotation.h"

#include <algorithm>

#include "text/numbers.h"

namespace orvantis {

void RotateAboutX(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                  double& d) {
    const double x = CosD(latitude) * CosD(longitude);
    const double y0 = CosD(latitude) * SinD(longitude);
    const double z0 = SinD(latitude);
    const double y = y0 * cosTilt - z0 * sinTilt;
    const double z = y0 * sinTilt + z0 * cosTilt;

    // sin(d) = sin(b) cos(e) + cos(b) sin(e) sin(l), which rounding may carry past 1;
    // tan(a) = (sin(l) cos(e) - tan(b) sin(e)) / cos(l), both sides times cos(b), so that the
    // poles of the old coordinates need no tangent.
    d = RadToDeg(std::asin(std::clamp(z, -1.0, 1.0)));
    a = Modulo(RadToDeg(std::atan2(y, x)), 360);
}

}  // namespace orvantis
