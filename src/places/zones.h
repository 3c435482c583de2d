// The zone file "timezone.fil": the mnemonics that a user may type for a zone, one a line in
// columns, open to any text editor.
#pragma once

namespace orvantis {

/// Reads "timezone.fil" of UserDataPath into the zone table. If it can't be opened the box of
/// FileOpener is shown and the table stays as it was. Nothing is checked: a time that is wrong
/// shows when it is used.
void LoadZones();

}  // namespace orvantis
