#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace NSLoopTool {

/// Rows of text in columns that are as wide as their widest cell.
class CTable {
public:
    struct SColumn {
        std::string fHead;
        bool fIsNumber = false; // to the right
    };

    explicit CTable(std::vector<SColumn> columns) : fColumns(std::move(columns)) {}

    /// A cell for each column; text that came from outside has passed SafeText.
    void Add(std::vector<std::string> cells) { fRows.push_back(std::move(cells)); }
    /// To standard output. The last column is not padded.
    void Print() const;

private:
    void PrintRow(const std::vector<std::string>& cells, const std::vector<size_t>& widths) const;

    std::vector<SColumn> fColumns;
    std::vector<std::vector<std::string>> fRows;
};

} // namespace NSLoopTool
