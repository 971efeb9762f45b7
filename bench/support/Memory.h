#pragma once

namespace ZroCommon::bench {

/// Bytes that are allocated from the C library's heap at this moment, in all arenas and mappings.
double liveHeap();

/// Has the C library do what the frees so far put off, which is joining small chunks. Otherwise
/// that falls to the next larger allocation, whoever makes it.
void settleHeap();

/// Highest resident memory since the last `resetPeakResident`, in bytes.
double peakResident();
/// Gives free heap back to the system and forgets the peak so far. False when the kernel refuses;
/// the peak is then that of the whole process.
bool resetPeakResident();

}  // namespace ZroCommon::bench
