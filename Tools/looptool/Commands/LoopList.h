#pragma once

#include "looptool/Loop/LoopHeader.h"

#include <span>
#include <string>
#include <vector>

namespace NSLoopTool {

/// A line of a list of loops.
struct SListedLoop {
    std::string fFile;
    SLoopHeader fHeader;
};

/// A column: its name is the option that filters by it, the key in JSON lines and
/// the head in CSV.
struct SListColumn {
    const char* fName;
    const char* fHelp;
    double (*fNumber)(const SListedLoop& loop);    // null for texts
    std::string (*fText)(const SListedLoop& loop); // null for numbers

    bool IsNumber() const { return fNumber != nullptr; }
};

std::span<const SListColumn> ListColumns();
/// Null for an unknown name.
const SListColumn* FindListColumn(const std::string& name);

void PrintListTable(const std::vector<SListedLoop>& loops);
void PrintListJson(const std::vector<SListedLoop>& loops);
void PrintListCsv(const std::vector<SListedLoop>& loops);

} // namespace NSLoopTool
