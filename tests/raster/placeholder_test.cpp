// Stands in until the tests of the raster room join.
