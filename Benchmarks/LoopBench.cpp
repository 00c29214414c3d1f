// Measures this build of the library beside its peers and, with --against, beside another build.

#include "Benchmarks/Contest/Contests.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <fstream>
#include <string>

namespace LoopBench {

void SSession::Hold(CContest& contest) {
    contest.Run(fQuick ? 7 : 11, fQuick ? 0.02 : 0.1);
    contest.Print();
    fReport.push_back(contest.ToJson());
}

std::vector<const CLibrary*> SSession::FromOldest() const {
    std::vector<const CLibrary*> libraries;
    for (auto library = fLibraries.rbegin(); library != fLibraries.rend(); ++library) {
        libraries.push_back(library->get());
    }
    return libraries;
}

} // namespace LoopBench

namespace {

void Measure(int argc, char** argv) {
    LoopBench::SSession session;
    std::vector<std::string> others;
    std::string voices;
    std::string json;
    std::string only;
    CLI::App app("Measures the library beside its peers, all in one run.");
    app.add_flag("--quick", session.fQuick, "fewer loops and shorter turns: under two minutes");
    app.add_option("--against", others, "another build of the library")->check(CLI::ExistingFile);
    app.add_option("--voices", voices, "a module with EightVoices.cpp of another build")
        ->check(CLI::ExistingFile);
    app.add_option("--json", json, "write the figures to this file");
    app.add_option("--only", only, "decode, render, load, growth or start");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::exit(app.exit(error));
    }
    using LoopBench::CLibrary;
    session.fLibraries.push_back(std::make_unique<CLibrary>("this build", LOOP_LIBRARY_FILE));
    for (const std::string& other : others) {
        session.fLibraries.push_back(std::make_unique<CLibrary>("other build", other));
    }
    if (!voices.empty()) {
        session.fEarlierVoices = reinterpret_cast<decltype(session.fEarlierVoices)>(
            LoopBench::FindInModule(voices, "LoopBenchRunEightVoices"));
    }
    const auto isWanted = [&](const char* name) { return only.empty() || only == name; };
    if (isWanted("decode")) {
        HoldDecodeContests(session);
    }
    if (isWanted("render")) {
        HoldRenderContests(session);
    }
    if (isWanted("load")) {
        HoldLoadContests(session);
    }
    if (isWanted("growth")) {
        HoldGrowthContests(session);
    }
    if (isWanted("start")) {
        HoldStartContests(session);
    }
    if (!json.empty()) {
        std::ofstream file(json);
        file << session.fReport.dump(1) << '\n';
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + json);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        Measure(argc, argv);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "LoopBench: %s\n", failure.what());
        return 1;
    }
}
