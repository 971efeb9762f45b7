#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace ZroCommon::testing {

/// A table of tab-separated values whose first line names the columns.
class Table {
public:
    using Row = std::map<std::string, std::string>;

    /// Throws `std::runtime_error` when the file cannot be read.
    explicit Table(const std::string& path);

    const std::vector<Row>& rows() const { return m_rows; }

private:
    std::vector<Row> m_rows;
};

}  // namespace ZroCommon::testing
