#pragma once

#include <string>
#include <vector>

namespace NSLoopTool {

/// The word among `words` that someone who typed `word` most likely meant; empty if none is near.
std::string SimilarWord(const std::string& word, const std::vector<std::string>& words);

} // namespace NSLoopTool
