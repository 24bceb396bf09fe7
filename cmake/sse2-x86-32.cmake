# Every 32-bit x86 build computes with SSE2 doubles, never the x87 unit.
# x87 keeps intermediates in 80 bits and rounds them to 64 only where the
# compiler spills them, so the same fit or transform would differ in its last
# bits from one build, one optimization level or one inlining to the next,
# and from the 64-bit builds, which use SSE2 by definition. With SSE2 every
# operation rounds to double as IEEE 754 says, and the 32-bit library gives
# the 64-bit one's results to the bit (the golden test holds them).
# Every x86 processor since the Pentium 4 has SSE2, as Windows 8 requires.
set(VELMARIN_SSE2 "-msse2 -mfpmath=sse")
string(APPEND CMAKE_C_FLAGS_INIT " ${VELMARIN_SSE2}")
string(APPEND CMAKE_CXX_FLAGS_INIT " ${VELMARIN_SSE2}")
