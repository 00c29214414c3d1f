#include "looptool/Audio/CAudioWriter.h"

#include "looptool/Audio/Sndfile.h"
#include "looptool/Console/SafeText.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace NSLoopTool {

namespace {

constexpr uint64_t kMostBytes = 0xFFFFFFFF - 128; // of the audio behind any of the headers

void PutNumber(std::vector<uint8_t>& bytes, uint64_t value, size_t width, bool isBigEndian) {
    for (size_t i = 0; i < width; ++i) {
        bytes.push_back(static_cast<uint8_t>(value >> (8 * (isBigEndian ? width - 1 - i : i))));
    }
}

void PutText(std::vector<uint8_t>& bytes, const char* text) {
    for (; *text != 0; ++text) {
        bytes.push_back(static_cast<uint8_t>(*text));
    }
}

// At the top of 32 bits, at a depth.
int32_t WordOfFloat(float value, int32_t bits) {
    if (std::isnan(value)) {
        return 0;
    }
    const double scale = static_cast<double>(int64_t{1} << (bits - 1));
    const double scaled = std::clamp(static_cast<double>(value) * scale, -scale, scale - 1.0);
    const auto word = static_cast<uint32_t>(static_cast<int32_t>(std::lround(scaled)));
    return static_cast<int32_t>(word << (32 - bits));
}

} // namespace

CAudioWriter::CAudioWriter(const std::string& path, SAudioFormat format, int32_t sampleRate,
                           size_t channels, uint64_t frames)
    : fFormat(format), fSampleRate(static_cast<uint32_t>(sampleRate)), fChannels(channels),
      fFrames(frames), fOutput(path) {
    const bool hasHeader =
        format.fContainer == EContainer::kWav || format.fContainer == EContainer::kAiff;
    if (hasHeader && frames > kMostBytes / (channels * format.GetSampleBytes())) {
        throw CToolFailure(SafeText(path) + ": more than the 4 GB that WAV and AIFF files hold; "
                                            "--format raw or flac has no such limit",
                           kExitCode_Usage);
    }
    std::vector<uint8_t> header;
    if (format.fContainer == EContainer::kWav) {
        header = MakeWavHeader();
    } else if (format.fContainer == EContainer::kAiff) {
        header = MakeAiffHeader();
    } else if (format.fContainer == EContainer::kFlac) {
        fFlac = MakeFlacEncoder(fOutput, SafeText(path), sampleRate, channels,
                                format.fEncoding == EEncoding::kPcm16 ? 16 : 24);
    }
    fOutput.Write(header.data(), header.size());
}

CAudioWriter::~CAudioWriter() = default;

std::vector<uint8_t> CAudioWriter::MakeWavHeader() const {
    const bool isFloat = fFormat.fEncoding == EEncoding::kFloat;
    const size_t frameBytes = fChannels * fFormat.GetSampleBytes();
    const uint64_t dataBytes = fFrames * frameBytes;
    const uint64_t formatBytes = isFloat ? 18 : 16;
    std::vector<uint8_t> bytes;
    const auto put = [&bytes](uint64_t value, size_t width) {
        PutNumber(bytes, value, width, false);
    };
    PutText(bytes, "RIFF");
    put(4 + 8 + formatBytes + (isFloat ? 12 : 0) + 8 + dataBytes + (dataBytes & 1), 4);
    PutText(bytes, "WAVEfmt ");
    put(formatBytes, 4);
    put(isFloat ? 3 : 1, 2);
    put(fChannels, 2);
    put(fSampleRate, 4);
    put(fSampleRate * uint64_t{frameBytes}, 4);
    put(frameBytes, 2);
    put(fFormat.GetSampleBytes() * 8, 2);
    if (isFloat) {
        put(0, 2);
        PutText(bytes, "fact");
        put(4, 4);
        put(fFrames, 4);
    }
    PutText(bytes, "data");
    put(dataBytes, 4);
    return bytes;
}

std::vector<uint8_t> CAudioWriter::MakeAiffHeader() const {
    const bool isFloat = fFormat.fEncoding == EEncoding::kFloat;
    const uint64_t dataBytes = fFrames * fChannels * fFormat.GetSampleBytes();
    const uint64_t commonBytes = isFloat ? 24 : 18;
    std::vector<uint8_t> bytes;
    const auto put = [&bytes](uint64_t value, size_t width) {
        PutNumber(bytes, value, width, true);
    };
    PutText(bytes, "FORM");
    put(4 + (isFloat ? 12 : 0) + 8 + commonBytes + 16 + dataBytes + (dataBytes & 1), 4);
    PutText(bytes, isFloat ? "AIFCFVER" : "AIFF");
    if (isFloat) {
        put(4, 4);
        put(0xA2805140, 4); // the one version of such files
    }
    PutText(bytes, "COMM");
    put(commonBytes, 4);
    put(fChannels, 2);
    put(fFrames, 4);
    put(fFormat.GetSampleBytes() * 8, 2);
    // The rate as an 80-bit floating-point number, its mantissa at the top of 64 bits.
    const auto shift = static_cast<uint32_t>(std::countl_zero(uint64_t{fSampleRate}));
    put(16383 + 63 - shift, 2);
    put(uint64_t{fSampleRate} << shift, 8);
    if (isFloat) {
        PutText(bytes, "fl32");
        put(0, 2);
    }
    PutText(bytes, "SSND");
    put(8 + dataBytes, 4);
    put(0, 8);
    return bytes;
}

void CAudioWriter::PutSamples(const std::vector<int32_t>& words, const std::vector<float>& floats) {
    if (fFlac != nullptr) {
        fFlac->Write(words.data(), words.size() / fChannels);
        return;
    }
    const bool isBigEndian = fFormat.fContainer == EContainer::kAiff;
    const size_t width = fFormat.GetSampleBytes();
    std::vector<uint8_t> bytes;
    bytes.reserve((words.size() + floats.size()) * width);
    for (const int32_t word : words) {
        PutNumber(bytes, static_cast<uint32_t>(word) >> (32 - 8 * width), width, isBigEndian);
    }
    for (const float value : floats) {
        PutNumber(bytes, std::bit_cast<uint32_t>(value), width, isBigEndian);
    }
    fOutput.Write(bytes.data(), bytes.size());
}

void CAudioWriter::Write(const std::vector<std::vector<float>>& planes, size_t first,
                         size_t count) {
    const bool isFloat = fFormat.fEncoding == EEncoding::kFloat;
    const int32_t bits = fFormat.fEncoding == EEncoding::kPcm16 ? 16 : 24;
    std::vector<int32_t> words;
    std::vector<float> floats;
    for (size_t frame = first; frame < first + count; ++frame) {
        for (const std::vector<float>& plane : planes) {
            if (isFloat) {
                floats.push_back(plane[frame]);
            } else {
                words.push_back(WordOfFloat(plane[frame], bits));
            }
        }
    }
    PutSamples(words, floats);
}

void CAudioWriter::Write(const std::vector<std::vector<int32_t>>& planes, int32_t bitDepth,
                         size_t first, size_t count) {
    const bool isFloat = fFormat.fEncoding == EEncoding::kFloat;
    const float unit = 1.0f / static_cast<float>(int32_t{1} << (bitDepth - 1));
    std::vector<int32_t> words;
    std::vector<float> floats;
    for (size_t frame = first; frame < first + count; ++frame) {
        for (const std::vector<int32_t>& plane : planes) {
            if (isFloat) {
                floats.push_back(static_cast<float>(plane[frame]) * unit);
            } else {
                const auto word = static_cast<uint32_t>(plane[frame]);
                words.push_back(static_cast<int32_t>(word << (32 - bitDepth)));
            }
        }
    }
    PutSamples(words, floats);
}

void CAudioWriter::Commit() {
    if (fFlac != nullptr) {
        fFlac->Finish();
    }
    const uint64_t dataBytes = fFrames * fChannels * fFormat.GetSampleBytes();
    if ((dataBytes & 1) != 0 && fFlac == nullptr && fFormat.fContainer != EContainer::kRaw) {
        const uint8_t pad = 0;
        fOutput.Write(&pad, 1);
    }
    fOutput.Commit();
}

void WriteAudioFile(const std::string& path, SAudioFormat format, const SAudio& audio) {
    CAudioWriter writer(path, format, audio.fSampleRate, audio.fPlanes.size(),
                        audio.GetFrameCount());
    for (size_t first = 0; first < audio.GetFrameCount(); first += kLotFrames) {
        StopIfInterrupted();
        writer.Write(audio.fPlanes, audio.fBitDepth, first,
                     std::min(kLotFrames, audio.GetFrameCount() - first));
    }
    writer.Commit();
}

void WriteFloatFile(const std::string& path, SAudioFormat format, int32_t sampleRate,
                    const std::vector<std::vector<float>>& planes) {
    const size_t frames = planes.front().size();
    CAudioWriter writer(path, format, sampleRate, planes.size(), frames);
    for (size_t first = 0; first < frames; first += kLotFrames) {
        StopIfInterrupted();
        writer.Write(planes, first, std::min(kLotFrames, frames - first));
    }
    writer.Commit();
}

} // namespace NSLoopTool
