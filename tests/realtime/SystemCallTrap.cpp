// A filter of the kernel's on one thread turns each system call into a signal; the handler counts it and
// makes the call in its place, by the one instruction that the filter lets through:
//
//   any system call --filter--> SIGSYS --> count, gate: syscall instruction --filter--> kernel
#include "CallCounter.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>

#include <cstdint>
#include <iterator>

#if defined(__x86_64__)

// long systemCallGate(long number, long a, long b, long c, long d, long e, long f): what the kernel answers.
asm(R"(
    .text
    .hidden systemCallGate, systemCallGateEnd
    .globl systemCallGate, systemCallGateEnd
    .type systemCallGate, @function
systemCallGate:
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
systemCallGateEnd:
    ret
    .size systemCallGate, . - systemCallGate
)");

extern "C" long systemCallGate(long number, long a, long b, long c, long d, long e, long f);
extern "C" const char systemCallGateEnd[];

namespace {

void handle(int, siginfo_t* info, void* context)
{
    auto& registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    calls::noteSystemCall(info->si_syscall, static_cast<std::size_t>(registers[REG_RDX]));
    registers[REG_RAX] =
        systemCallGate(info->si_syscall, registers[REG_RDI], registers[REG_RSI], registers[REG_RDX],
                       registers[REG_R10], registers[REG_R8], registers[REG_R9]);
}

bool installFilter()
{
    const auto gate = reinterpret_cast<std::uintptr_t>(systemCallGateEnd);
    constexpr std::uint32_t place = offsetof(seccomp_data, instruction_pointer);
    // Each jump says how many of the lines that follow it skips: if equal, and if not.
    sock_filter lines[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_rt_sigreturn, 4, 0),  // the handler's own end
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(gate), 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place + 4),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(gate >> 32), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
    };
    const sock_fprog program{static_cast<unsigned short>(std::size(lines)), lines};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

bool calls::trapSystemCalls()
{
    struct sigaction action {};
    action.sa_sigaction = handle;
    action.sa_flags = SA_SIGINFO;
    return sigaction(SIGSYS, &action, nullptr) == 0 && installFilter();
}

#else

bool calls::trapSystemCalls() { return false; }

#endif
