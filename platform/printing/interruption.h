// Signals that ask the program to end while something is under way that must not be left half done.
#pragma once

/// As long as it lives, SIGINT, SIGTERM and SIGHUP do not end the program, but are kept: what is under way looks, ends,
/// and takes back what it has begun. The program then ends by the signal, when the object goes; by a second one it ends
/// at once. Signals that the program treats in a way of its own already are left alone. One at a time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
};

/// Does what a signal does, but ends nothing of the program than what is under way. From any thread.
void interrupt();

/// Whether such a signal has come, or somebody has interrupted.
bool isInterrupted();

/// A descriptor that can be read from the moment when one has come; -1 for none. Nobody reads it.
int interruptionDescriptor();
