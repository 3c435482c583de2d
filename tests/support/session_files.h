// The folders of one session for a test: the program's own, the shipped one, the INI folder and
// the sibling's, all in one folder of the test's own, and small files to put there.
#pragma once

#include <string>
#include <string_view>

#include "session/driver.h"
#include "support/temp_folder.h"
#include "surface/values.h"
#include "text/bytes.h"

namespace orvantis {

class SessionFiles {
  public:
    /// Ships a database of two lines and the zone file. The ephemeris is the system's.
    SessionFiles();

    const TempFolder& Folder() const { return folder_; }
    StartPaths paths;

    /// Path of a file in a folder: "program", "user", "shipped", "config", "system" or
    /// "sibling", native.
    std::string At(std::string_view folder, std::string_view name) const;
    std::string Write(std::string_view folder, std::string_view name, const Bytes& bytes) const;
    std::string Write(std::string_view folder, std::string_view name, std::string_view text) const;

    /// Writes a sibling's INI that names the folders "system" and "sibling".
    void AddSibling(int digit) const;

  private:
    TempFolder folder_;
};

/// A map database of two lines.
Bytes TwoLines();

/// A point selection file in which just this point is selected.
Bytes SelectionOf(std::int16_t point);

/// A point colour file of one colour.
Bytes ColoursOf(Colour colour);

/// An exchange file with one chart of this name.
Bytes ExchangeFile(std::string_view name);

/// A map document of this title, without fills.
Bytes MapOf(std::string_view title);

}  // namespace orvantis
