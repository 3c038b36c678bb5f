// Any bytes as the small files that the program keeps in the home directory: the information about a checkpoint, and
// what converters have answered. Names that come back fit where they are kept, and lie in the file.
#include "base/directories.h"
#include "files/checkpoint_files.h"
#include "files/converter_answers.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

struct Home {
    Home() {
        std::string pattern = std::filesystem::temp_directory_path() / "kirvo-fuzz-XXXXXX";
        if (!mkdtemp(pattern.data()) || !CopyFileName(HomeDir, pattern.c_str()) || !TakeCheckpointFiles())
            std::abort();
        Path = pattern;
    }

    ~Home() { std::filesystem::remove_all(Path); }

    void Write(const char* name, const std::string& bytes) const {
        std::ofstream(Path / name, std::ios::binary) << bytes;
    }

    std::filesystem::path Path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const Home home;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    home.Write(".kirvo_checkpoint_info", bytes);
    CheckpointOrigin origin;
    if (ReadCheckpointOrigin(origin) &&
        (bytes.find(origin.Path) == std::string::npos || bytes.find(origin.Name) == std::string::npos))
        std::abort();
    home.Write(".kirvo_converters", bytes);
    ConverterAnswer answer;
    const ConverterAnswers answers;
    if (answers.Find("/bin/true", answer) && bytes.find(answer.Label) == std::string::npos)
        std::abort();
    return 0;
}
