#include "kirvo_file/commands.h"

#include <cstdio>
#include <unistd.h>

int main(int argumentCount, char* arguments[]) {
    // The model reader traces to the standard output, which here belongs to the answer.
    const int answerDescriptor = dup(STDOUT_FILENO);
    std::FILE* answer = answerDescriptor < 0 ? nullptr : fdopen(answerDescriptor, "w");
    if (!answer || !std::freopen("/dev/null", "w", stdout)) {
        std::perror("kirvo-file");
        return FileHasProblems;
    }
    int status = RunKirvoFile({arguments + 1, arguments + argumentCount}, answer);
    if (std::ferror(answer) | std::fclose(answer)) {
        std::perror("kirvo-file");
        status = FileHasProblems;
    }
    return status;
}
