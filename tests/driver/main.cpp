// The program with more script commands, for tests that have to look inside it between two events.
#include "driver/driver_commands.h"
#include "driver/storm.h"

#include "shell/start_up.h"

int main(int argumentCount, char* arguments[]) {
    InstallDriverCommands();
    InstallStorm();
    RunKirvo(argumentCount, arguments);
}
