#include "looptool/Console/CTable.h"

#include "looptool/Console/SafeText.h"

#include <algorithm>
#include <cstdio>

namespace NSLoopTool {

void CTable::PrintRow(const std::vector<std::string>& cells,
                      const std::vector<size_t>& widths) const {
    std::string line;
    for (size_t i = 0; i < cells.size(); ++i) {
        const std::string padding(widths[i] - TextWidth(cells[i]), ' ');
        line += fColumns[i].fIsNumber ? padding + cells[i] : cells[i] + padding;
        line += "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    std::puts(line.c_str());
}

void CTable::Print() const {
    std::vector<std::string> heads;
    std::vector<size_t> widths;
    for (size_t i = 0; i < fColumns.size(); ++i) {
        heads.push_back(fColumns[i].fHead);
        widths.push_back(TextWidth(fColumns[i].fHead));
        for (const std::vector<std::string>& row : fRows) {
            widths[i] = std::max(widths[i], TextWidth(row[i]));
        }
    }
    PrintRow(heads, widths);
    for (const std::vector<std::string>& row : fRows) {
        PrintRow(row, widths);
    }
}

} // namespace NSLoopTool
