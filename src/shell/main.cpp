#include "shell/start_up.h"

int main(int argumentCount, char* arguments[]) {
    RunKirvo(argumentCount, arguments);
}
