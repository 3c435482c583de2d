// Stands in until the surface on Qt Gui joins.
