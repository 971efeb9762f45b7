#pragma once

#include <fstream>
#include <map>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZroCommon::testing {

struct Measuring {
    const std::string& dataDir;
    const std::string& told;  ///< what the page says
    std::ostream& out;        ///< gets what it should say
};

/// Reads every document that the tables list and every case of the W3C suite, compares with what
/// the tables say, loads each document in both modes, saves it and loads it again.
/// \return the number of faults: differences without a reason
int surveyDocuments(const Measuring& measuring);

/// Shows the cells of the public tables of number formats. \return the differences of no kind
int surveyFormats(const Measuring& measuring);

/// Makes the rows of the page's tables anew from their first cells. \return what it lacks
int remakeGallery(const Measuring& measuring);

/// A row of a table by the names of its columns.
using Row = std::map<std::string, std::string>;

inline std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, '\t');) {
        cells.push_back(cell);
    }
    return cells;
}

/// Tab-separated values whose first line names the columns. Throws `std::runtime_error`.
inline std::vector<Row> readTable(const std::string& path) {
    std::ifstream in(path);
    std::string line;
    if (!std::getline(in, line)) {
        throw std::runtime_error("cannot read " + path);
    }
    const std::vector<std::string> names = cellsOf(line);
    std::vector<Row> rows;
    while (std::getline(in, line)) {
        std::vector<std::string> cells = cellsOf(line);
        cells.resize(names.size());
        Row& row = rows.emplace_back();
        for (std::size_t i = 0; i < names.size(); ++i) {
            row[names[i]] = cells[i];
        }
    }
    return rows;
}

}  // namespace ZroCommon::testing
