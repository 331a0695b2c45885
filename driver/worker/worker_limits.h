// What a program that reads strangers' documents may do. It is called first in such a program.
#pragma once

#include <csignal>

#include <unistd.h>

/// Ends the program, by the signal, with the one that started it, which reads what it writes to that descriptor. False
/// when that one has ended already.
bool endWithStarter(int signal = SIGKILL, int output = STDOUT_FILENO);

/// Seconds of the processor, from now on: afterwards the system ends the program with SIGXCPU.
void limitProcessor(int seconds);

struct WorkerLimits {
    int megabytes;  // of memory
    int openFiles;  // beside those that are open
};
/// Also takes away the right to write files, to leave a core, also where cores go to a program, and to reach a network.
void limitWorker(const WorkerLimits& limits);
