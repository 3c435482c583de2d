// Rotation of a direction on the sphere.
#pragma once

namespace orvantis {

/// The point at (longitude, latitude) in coordinates rotated about the x axis by a tilt: ecliptic
/// to equatorial with the tilt as obliquity. Degrees; `a` in 0 to 360, `d` in -90 to 90. At a pole
/// of the new coordinates `a` has no meaning.
void RotateAboutX(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                  double& d);

}  // namespace orvantis
