// A thread that has time: what it does must not cost those who are waited for.
#pragma once

namespace qk {

/// From now on the calling thread gets the processor after the others of the machine. It still gets a share,
/// so that nobody waits for long who waits for something that it holds.
void stepBackThisThread();

}  // namespace qk
