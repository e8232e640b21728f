// The measuring program. Names are `<work>/<size>/<who>`: what stands under one work and size is compared,
// and "ours" is what the others are compared with. bench/run makes docs/performance.md of what it prints.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
