#include "PorterPackage/FileSupport/CodeModule/CCodeModuleLocation.h"

#include "FileLib/Implementation/SpecialFolders.h"
#include "FileLib/Rules/PosixNameCodec.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace NSPorter {

namespace {

// Runs this program from where it was copied to, in a child with the given working directory; the
// child removes its own file before it asks. Answers the child's exit code.
int RunCopy(const std::string& workingDirectory, const std::string& program,
            const char* test = "KnowsItsName") {
    const pid_t child = fork();
    if (child == 0) {
        if (chdir(workingDirectory.c_str()) == 0) {
            const std::string filter = std::string("--gtest_filter=DISABLED_RunFromACopy.") + test;
            execl(program.c_str(), program.c_str(), filter.c_str(),
                  "--gtest_also_run_disabled_tests", "--gtest_brief=1",
                  static_cast<char*>(nullptr));
        }
        _exit(120);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void CopyProgram(const std::string& path) {
    std::ifstream source("/proc/self/exe", std::ios::binary);
    std::ofstream(path, std::ios::binary) << source.rdbuf();
    ASSERT_EQ(chmod(path.c_str(), 0700), 0);
}

const std::string kHostileName = "a:b?*| \x01\xFF\xC3 con.so .";

} // namespace

// Run only in the children of the test below.
TEST(DISABLED_RunFromACopy, KnowsItsName) {
    ASSERT_EQ(unlink(kHostileName.c_str()), 0);
    ASSERT_EQ(chdir("/"), 0);
    const CCodeModuleLocation location = FindCodeModule(nullptr);
    EXPECT_EQ(NSFileLibInternals::PosixNameFromNative(location.fPath1), kHostileName);
    const std::u16string path = NSFileLibInternals::WinGetExecutablePath();
    EXPECT_TRUE(path.ends_with(u'\\' + location.fPath1)) << "the system says (deleted) behind it";
    NSFileLib::ReleaseFileLibSingleton();
}

TEST(DISABLED_RunFromACopy, ItsNameMayEndAsThoseOfDeletedFiles) {
    EXPECT_TRUE(NSFileLibInternals::WinGetExecutablePath().ends_with(u"\\a (deleted)"));
}

TEST(CodeModule, IsFoundUnderAnyPathAndAfterItsFileIsGone) {
    char root[] = "/tmp/module.XXXXXX";
    ASSERT_NE(mkdtemp(root), nullptr);
    std::string folder = root;
    for (int i = 0; i < 4; ++i) {
        folder += "/" + std::string(200, 'd') + "\xE9?:";
        ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
    }
    const std::string program = folder + "/" + kHostileName;
    CopyProgram(program);
    EXPECT_EQ(RunCopy(folder, program), 0);
    CopyProgram(program);
    EXPECT_EQ(RunCopy(folder, "./" + kHostileName), 0);
    CopyProgram(folder + "/a (deleted)");
    EXPECT_EQ(RunCopy("/", folder + "/a (deleted)", "ItsNameMayEndAsThoseOfDeletedFiles"), 0);
    const std::string removeAll = std::string("rm -r ") + root;
    EXPECT_EQ(std::system(removeAll.c_str()), 0);
}

} // namespace NSPorter
