#pragma once

#include "Tests/Host/HostLoop.h"
#include "Tests/Host/LoadedLibrary.h"

#include <fstream>
#include <random>
#include <string>

// What the tests of loading and unloading share.

/// Copies of the library's file in a folder of their own, which goes with the test.
class CLibraryCopies : public testing::Test {
protected:
    CLibraryCopies() {
        fFolder = std::filesystem::temp_directory_path() /
                  ("looplibrary-" + std::to_string(std::random_device()()));
        std::filesystem::create_directory(fFolder);
    }
    ~CLibraryCopies() override {
        std::error_code ignored;
        std::filesystem::remove_all(fFolder, ignored);
    }

    /// Folders on the way to the name are made.
    std::filesystem::path Copy(const std::filesystem::path& name) const {
        std::filesystem::path file = fFolder / name;
        std::filesystem::create_directories(file.parent_path());
        std::ifstream source(LinkedLibraryFile(), std::ios::binary);
        std::ofstream(file, std::ios::binary) << source.rdbuf();
        return file;
    }

    std::filesystem::path fFolder;
};

inline LOPResult CreateLoop(const CLoadedLibrary& library, LOPHandle& handle, const Bytes& bytes) {
    return library.Create(&handle, bytes.data(), static_cast<int32_t>(bytes.size()), nullptr,
                          nullptr);
}

/// The first frames of a loop's preview; the library must be initialised.
inline std::vector<float> Hear(const CLoadedLibrary& library, const Bytes& bytes) {
    std::vector<float> left(4000);
    LOPHandle handle = 0;
    EXPECT_EQ(CreateLoop(library, handle, bytes), kLOPResult_OK);
    EXPECT_EQ(library.StartPreview(handle), kLOPResult_OK);
    LOPRenderBuffers buffers{left.data(), nullptr};
    EXPECT_EQ(library.RenderPreviewBatch(handle, 4000, &buffers), kLOPResult_OK);
    EXPECT_EQ(library.StopPreview(handle), kLOPResult_OK);
    library.Delete(&handle);
    EXPECT_EQ(handle, 0U);
    return left;
}

/// One beat, so that loads take little time.
inline Bytes ShortLOP2() {
    NSLoopWriter::SDrumLoopOptions options = DrumOptions();
    options.fBeats = 1;
    return WriteLOP2(NSLoopWriter::MakeDrumLOP2(options));
}

/// A file whose load fails by an exception inside the library.
inline Bytes TruncatedLOP2() {
    Bytes bytes = ShortLOP2();
    bytes.resize(bytes.size() / 2);
    return bytes;
}
