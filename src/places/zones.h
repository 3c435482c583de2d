// The zone file "timezone.fil": the mnemonics that a user may type for a zone, one a line in
// columns, open to any text editor.
#pragma once

namespace orvantis {

/// Reads "timezone.fil" of UserDataPath, or where there is nothing of that name the one that the
/// program comes with, into the zone table; text in UTF-8 or code page 1252. The table stays as it
/// was if the file can't be opened, which the box of FileOpener tells, or can't be read to its end,
/// which nothing tells. Nothing is checked: a time that is wrong shows when it is used. The table
/// holds at most 32767 lines, empty ones included.
void LoadZones();

}  // namespace orvantis
