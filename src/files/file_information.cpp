#include "files/file_information.h"

#include <cstdio>
#include <unistd.h>

char FileTitle[FileInformationSize];
char FileAuthor[FileInformationSize];
char FileCompany[FileInformationSize];
char FileContact[FileInformationSize];
char FileComment1[FileInformationSize];
char FileComment2[FileInformationSize];
char FileComment3[FileInformationSize];
char FileComment4[FileInformationSize];
std::int32_t FileCreateId;
std::int32_t FilePublicDomain;

namespace {

char* const InformationLines[] = {FileTitle,    FileAuthor,   FileCompany,  FileContact,
                                  FileComment1, FileComment2, FileComment3, FileComment4};

std::uint32_t Fold(std::uint32_t number, const char* text) {
    // FNV-1a, http://www.isthe.com/chongo/tech/comp/fnv/
    for (; *text && *text != '\n'; ++text)
        number = (number ^ static_cast<unsigned char>(*text)) * 16777619U;
    return number;
}

std::int32_t ComputeMachineIdentifier() {
    char identity[256] = "";
    if (std::FILE* file = std::fopen("/etc/machine-id", "r")) {
        if (!std::fgets(identity, sizeof identity, file) || identity[0] == '\n')
            identity[0] = '\0';
        std::fclose(file);
    }
    // A system without an identity of its own has at least a name.
    if (!identity[0] && gethostname(identity, sizeof identity - 1) != 0)
        identity[0] = '\0';
    const std::uint32_t number = Fold(2166136261U, identity);
    return static_cast<std::int32_t>(number ? number : 1);
}

} // namespace

std::int32_t MachineIdentifier() {
    static const std::int32_t identifier = ComputeMachineIdentifier();
    return identifier;
}

int FileInformationIsEmpty() {
    for (const char* line : InformationLines)
        if (*line)
            return 0;
    return 1;
}

void ResetFileInformation() {
    for (char* line : InformationLines)
        *line = '\0';
    FileCreateId = MachineIdentifier();
    FilePublicDomain = 0;
}

int FileIsLocked() {
    return FileCreateId != MachineIdentifier();
}
