#pragma once

#include <string>
#include <vector>

namespace Tools {

// Prints rows of equally many cells, one at least. A column is as wide as its widest cell, with two columns for an East
// Asian character. On a terminal cells are cut so that each row is one line of it; elsewhere all is printed, and a cell
// of more than 200 columns moves what follows it.
void printTable(const std::vector<std::vector<std::string>>& rows);

} // namespace Tools
