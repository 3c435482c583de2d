// Map documents: what the user opens and saves as "a map". A region, a projection, a precision,
// the kinds of detail shown, and the seeds of the colour fills; no vectors.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "surface/values.h"
#include "text/bytes.h"

namespace orvantis {

namespace projection {
inline constexpr std::int16_t kCartesian = 0;
inline constexpr std::int16_t kMercator = 1;
inline constexpr std::int16_t kGlobeSphere = 2;
inline constexpr std::int16_t kGlobeOblate = 3;
}  // namespace projection

/// One map or view. The member initialisers are those of a new document. 140 bytes on disk.
///
/// | Offset | Size | Field                                   |
/// |--------|------|-----------------------------------------|
/// | 0      | 2    | reserved                                |
/// | 2      | 80   | title, blank padded                     |
/// | 82     | 16   | south, west, north, east, 4 each        |
/// | 98     | 2    | projection                              |
/// | 100    | 2    | precision                               |
/// | 102    | 18   | hidden[0] to hidden[8], 2 each          |
/// | 120    | 2    | gridOn                                  |
/// | 122    | 8    | gridLatStep, gridLongStep, 4 each       |
/// | 130    | 8    | cityFile, blank padded                  |
/// | 138    | 2    | fillCount                               |
struct MapDocument {
    std::int16_t reserved = 0;                                          ///< kept as read
    std::string title = "Lat: 90S00 to 90N00  Long: 180W00 to 180E00";  ///< up to 80 characters
    float south = -90;  ///< edges of the view, degrees, north and east positive;
    float west = -180;  ///< west above east: the view crosses the date line;
    float north = 90;   ///< a globe has south and north at its centre
    float east = 180;
    std::int16_t projection = 0;  ///< 0 to 3, see namespace projection
    std::int16_t precision = 5;   ///< level file drawn, 1 (finest) to 5
    std::array<Flag, 9> hidden = {0, 0, 0, -1, -1, 0, -1, -1, -1};  ///< by detail class 1 to 8
    Flag gridOn = kFalse;        ///< nonzero: the coordinate grid is shown
    float gridLatStep = 15;      ///< degrees
    float gridLongStep = 30;     ///< degrees
    std::string cityFile;        ///< base name of the city file, up to 8 characters, or blank
    std::int16_t fillCount = 0;  ///< fills of the fill list in use, 0 or more
};

inline constexpr std::int64_t kMapDocumentSize = 140;
inline constexpr std::size_t kMapTitleWidth = 80;  ///< characters
inline constexpr std::size_t kCityFileWidth = 8;

/// Seed of one fill, 12 bytes on disk: lat, longitude, colour, 4 bytes each.
struct FillRecord {
    float lat = 0;        ///< degrees, north positive
    float longitude = 0;  ///< degrees, east positive
    Colour colour = -1;   ///< -1: the sea colour of the moment; otherwise a colour, which may carry
                          ///< the palette mark
};

inline constexpr std::int64_t kFillRecordSize = 12;

/// The maps in memory.
struct MapState {
    std::array<MapDocument, 7> documents;  ///< 1 to 5 views; 0 the user's own map on its way in; 6
                                           ///< scratch of the file dialog
    std::int16_t current = 1;              ///< number of the current record
    std::int16_t viewTop = 1;              ///< number that counts the views made
    std::int16_t viewLowest = 1;           ///< lowest such number that can be gone back to
    std::string name;                      ///< name of the document last opened or saved, bytes of
                                           ///< code page 1252, "" of a new one
    std::vector<FillRecord> fills{1};      ///< 1 to fillCount; element 0 stands unused
    std::array<Image, 7> viewImages;       ///< pictures that views 1 to 5 have kept; by number
};

extern MapState mapState;

/// The current map document.
MapDocument& CurrentMap();

/// Records to and from their bytes on disk. Reading brings projection and precision into their
/// ranges, so that a file with others opens and is saved with the nearest ones; the rest is as it
/// stands.
MapDocument GetMapDocument(const std::uint8_t* p);
void PutMapDocument(std::uint8_t* p, const MapDocument& document);
FillRecord GetFillRecord(const std::uint8_t* p);
void PutFillRecord(std::uint8_t* p, const FillRecord& record);

/// Makes the default map current: the user's world.ovm if there is one, else a new document, which
/// has no name. With `redraw` set a full plot follows.
void NewMap(Flag redraw);

/// Reads a map document into record 1 and makes it current. On a failure tells the user and leaves
/// the map as it was; a file that can be opened but not read also closes all files and forgets the
/// stacked views, the menus with them. With `redraw` set the map joins the recent list and a full
/// plot follows. Returns the failed flag.
Flag OpenMap(std::string_view path, Flag redraw);

/// Writes the current record and its fills. Returns the failed flag; the user has been told.
Flag SaveMap(std::string_view path);

/// Appends a fill to the list of document `docNumber`. Degrees, north and east positive. Does
/// nothing once the list is full (32767 fills).
void AddFill(std::int16_t docNumber, float lat, float longitude, bool isSea, Colour colour);

/// Connection point, may be empty: shows the menus of a document that has changed, which are in
/// `mapMenus`.
extern void (*refreshMapMenus)(std::int16_t docNumber);

/// Connection point, may be empty: adds a path to the recent maps.
extern void (*addRecentMap)(std::string_view path);

/// Connection point, may be empty: the full plot that follows a change of map.
extern void (*plotFull)();

}  // namespace orvantis
