#include "looptool/CommandLine/SimilarWord.h"

#include <algorithm>
#include <numeric>

namespace NSLoopTool {

namespace {

// Letters to insert, drop, change or swap with their neighbour.
size_t EditDistance(const std::string& a, const std::string& b) {
    std::vector<std::vector<size_t>> steps(a.size() + 1, std::vector<size_t>(b.size() + 1));
    std::iota(steps[0].begin(), steps[0].end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        steps[i][0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
            steps[i][j] =
                std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
            }
        }
    }
    return steps[a.size()][b.size()];
}

} // namespace

std::string SimilarWord(const std::string& wordAsTyped, const std::vector<std::string>& words) {
    std::string word = wordAsTyped;
    for (char& letter : word) {
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    }
    std::string best;
    size_t bestDistance = std::max<size_t>(word.size() / 3, 1) + 1;
    for (const std::string& candidate : words) {
        const bool isBegun = word.size() >= 2 && candidate.starts_with(word);
        const size_t distance = isBegun ? 0 : EditDistance(word, candidate);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace NSLoopTool
