#pragma once

#include "looptool/Audio/SAudio.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace NSLoopTool {

/// Called with a percentage while a file is read or written.
using ProgressFunction = std::function<void(int64_t)>;

/// Reads an audio file of one or two channels; "-" is standard input. PCM of 16 and 24 bits is kept
/// to the bit; 8 bits become 16; everything finer, compressed with loss, or floating point becomes
/// 24. WAV and AIFF are read the same way on every system, all else by libsndfile where the program
/// was built with it.
///
/// CToolFailure names the file and what is wrong with it: also when it holds fewer frames than its
/// header says.
SAudio ReadAudioFile(const std::string& path, const ProgressFunction& progress);

/// The homes of the formats. Each is asked with the bytes of the file and its name for messages,
/// and answers false when it does not know the format.
bool ReadWav(const std::vector<uint8_t>& bytes, const std::string& name,
             const ProgressFunction& progress, SAudio& audio);
bool ReadAiff(const std::vector<uint8_t>& bytes, const std::string& name,
              const ProgressFunction& progress, SAudio& audio);
bool ReadBySndfile(const std::vector<uint8_t>& bytes, const std::string& name,
                   const ProgressFunction& progress, SAudio& audio);

} // namespace NSLoopTool
