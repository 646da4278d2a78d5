#include "support/VirtualDisplay.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int startMs = 20000;

std::string readNumber(int pipe)
{
    std::string number;
    pollfd wait{pipe, POLLIN, 0};
    char digit = 0;
    while (poll(&wait, 1, startMs) == 1 && read(pipe, &digit, 1) == 1 && digit != '\n')
        number += digit;
    return digit == '\n' ? number : std::string();
}

}  // namespace

VirtualDisplay::VirtualDisplay(const char* screen, const char* without)
{
    int ends[2];
    if (pipe(ends) != 0)
        return;
    process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that crashes leaves none behind
        close(ends[0]);
        const int nowhere = open("/dev/null", O_RDWR);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        const std::string descriptor = std::to_string(ends[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", screen, "-nolisten", "tcp",
               "-noreset", without ? "-extension" : nullptr, without, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    name = ':' + readNumber(ends[0]);
    close(ends[0]);
    if (name == ":")
        Kill();
    else
        setenv("DISPLAY", name.c_str(), 1);
}

VirtualDisplay::~VirtualDisplay()
{
    Kill();
    unsetenv("DISPLAY");
}

void VirtualDisplay::Kill()
{
    if (process <= 0)
        return;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    process = -1;
}
