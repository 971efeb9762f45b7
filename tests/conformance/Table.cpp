#include "tests/conformance/Table.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace ZroCommon::testing {
namespace {

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, '\t');) {
        cells.push_back(cell);
    }
    return cells;
}

}  // namespace

Table::Table(const std::string& path) {
    std::ifstream in(path);
    std::string line;
    if (!std::getline(in, line)) {
        throw std::runtime_error("cannot read " + path);
    }
    const std::vector<std::string> names = cellsOf(line);
    while (std::getline(in, line)) {
        const std::vector<std::string> cells = cellsOf(line);
        Row row;
        for (std::size_t i = 0; i < names.size(); ++i) {
            row[names[i]] = i < cells.size() ? cells[i] : std::string();
        }
        m_rows.push_back(row);
    }
}

}  // namespace ZroCommon::testing
