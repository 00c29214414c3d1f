#include "looptool/Commands/LoopList.h"

#include "looptool/Console/CTable.h"
#include "looptool/Console/Numbers.h"
#include "looptool/Console/SafeText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace NSLoopTool {

namespace {

std::string Signature(const SListedLoop& loop) {
    return std::to_string(loop.fHeader.fInfo.fTimeSignatureNumerator) + "/" +
           std::to_string(loop.fHeader.fInfo.fTimeSignatureDenominator);
}

// The widest stand last.
constexpr std::array kColumns = {
    SListColumn{"kind", "the kind", nullptr,
                [](const SListedLoop& loop) { return std::string(loop.fHeader.fKind); }},
    SListColumn{"tempo", "stored beats per minute",
                [](const SListedLoop& loop) { return loop.fHeader.fInfo.fStoredTempo / 1000.0; },
                nullptr},
    SListColumn{"bars", "whole bars",
                [](const SListedLoop& loop) { return static_cast<double>(loop.fHeader.fBars); },
                nullptr},
    SListColumn{"beats", "beats beyond the bars",
                [](const SListedLoop& loop) { return static_cast<double>(loop.fHeader.fBeats); },
                nullptr},
    SListColumn{"signature", "the time signature", nullptr, Signature},
    SListColumn{"seconds", "length of the audio",
                [](const SListedLoop& loop) { return loop.fHeader.fSeconds; }, nullptr},
    SListColumn{
        "rate", "frames per second",
        [](const SListedLoop& loop) { return static_cast<double>(loop.fHeader.fInfo.fSampleRate); },
        nullptr},
    SListColumn{
        "depth", "bits of a sample",
        [](const SListedLoop& loop) { return static_cast<double>(loop.fHeader.fInfo.fBitDepth); },
        nullptr},
    SListColumn{
        "channels", "1 or 2",
        [](const SListedLoop& loop) { return static_cast<double>(loop.fHeader.fInfo.fChannels); },
        nullptr},
    SListColumn{
        "slices", "slices that the file states",
        [](const SListedLoop& loop) { return static_cast<double>(loop.fHeader.fInfo.fSliceCount); },
        nullptr},
    SListColumn{"file", "the path", nullptr, [](const SListedLoop& loop) { return loop.fFile; }},
    SListColumn{"text", "the first creator text", nullptr,
                [](const SListedLoop& loop) { return loop.fHeader.fFirstText; }},
};

std::string CellText(const SListColumn& column, const SListedLoop& loop) {
    return column.IsNumber() ? DecimalText(column.fNumber(loop)) : column.fText(loop);
}

std::string CsvCell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char letter : text) {
        quoted += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    return quoted + "\"";
}

} // namespace

std::span<const SListColumn> ListColumns() {
    return kColumns;
}

const SListColumn* FindListColumn(const std::string& name) {
    const auto* const found =
        std::find_if(kColumns.begin(), kColumns.end(),
                     [&name](const SListColumn& column) { return name == column.fName; });
    return found == kColumns.end() ? nullptr : found;
}

void PrintListTable(const std::vector<SListedLoop>& loops) {
    std::vector<CTable::SColumn> heads;
    heads.reserve(kColumns.size());
    for (const SListColumn& column : kColumns) {
        heads.push_back({column.fName, column.IsNumber()});
    }
    CTable table(heads);
    for (const SListedLoop& loop : loops) {
        std::vector<std::string> cells;
        cells.reserve(kColumns.size());
        for (const SListColumn& column : kColumns) {
            cells.push_back(SafeText(CellText(column, loop)));
        }
        table.Add(cells);
    }
    table.Print();
}

void PrintListJson(const std::vector<SListedLoop>& loops) {
    for (const SListedLoop& loop : loops) {
        nlohmann::ordered_json json;
        for (const SListColumn& column : kColumns) {
            if (column.IsNumber()) {
                const double value = column.fNumber(loop);
                const auto whole = static_cast<int64_t>(value);
                json[column.fName] = value == static_cast<double>(whole)
                                         ? nlohmann::ordered_json(whole)
                                         : nlohmann::ordered_json(value);
            } else {
                json[column.fName] = column.fText(loop);
            }
        }
        std::puts(json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
    }
}

void PrintListCsv(const std::vector<SListedLoop>& loops) {
    std::string line;
    for (const SListColumn& column : kColumns) {
        line += (line.empty() ? "" : ",") + std::string(column.fName);
    }
    std::puts(line.c_str());
    for (const SListedLoop& loop : loops) {
        line.clear();
        for (const SListColumn& column : kColumns) {
            line += (&column == kColumns.data() ? "" : ",") + CsvCell(CellText(column, loop));
        }
        std::puts(line.c_str());
    }
}

} // namespace NSLoopTool
