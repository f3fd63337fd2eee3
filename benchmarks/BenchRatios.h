#pragma once

#include <string>

/*! Ratios within one run: times depend on the machine, but how two ways of doing the same compare hardly does.
 *
 *  A program that has BenchRatios.cpp among its sources runs its benchmarks and then prints a table of all ratios whose
 *  two benchmarks ran. With repetitions (--benchmark_repetitions) the fastest run of each counts.
 *
 *  A ratio that isn't met is told in the table alone, because a busy machine misses some. But a benchmark that ends
 *  with an error makes the program fail, unless the error begins with "skipped: ". */
namespace BenchRatios
{
/*! Wants benchmark \a slower to take at least \a factor times what \a faster takes. Both are full names, as the run
 *  prints them. */
void WantAtLeast(double factor, const std::string& slower, const std::string& faster);
/*! Wants benchmark \a name to take at most \a factor times what \a peer takes. */
void WantAtMost(double factor, const std::string& name, const std::string& peer);
/*! Wants the counter \a counter of benchmark \a name to be at most \a limit. */
void WantCounterAtMost(double limit, const std::string& name, const std::string& counter);
} // namespace BenchRatios
