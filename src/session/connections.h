// The connection points between the rooms, on one page.
#pragma once

namespace orvantis {

/// Fills every connection point that an earlier room offers to a later one.
void ConnectRooms();

}  // namespace orvantis
