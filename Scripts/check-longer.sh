#!/usr/bin/env bash
# Everything that takes too long to hold before each change is taken: before a release, or for a
# change that it concerns. Each check installs what it needs.
#
#     Scripts/check-longer.sh
set -uo pipefail
cd "$(dirname "$0")/.."
. Scripts/check-list.sh

# clang-tidy over all sources, with every path.
check "analysis" Scripts/check-style.sh --analyse
# The whole build and all tests, twice.
check "compilers" Scripts/test-compilers.sh
# The whole build and all tests.
check "tests, clang++" Scripts/test.sh --preset test-clang
# The same, some times slower.
check "sanitizers" Scripts/test.sh --preset sanitize
# The whole build and all tests, and five times those that hold the format's descriptions to each
# other.
check "recipe" Scripts/check-recipe.sh
# The whole build, and all tests many times slower.
check "memcheck" Scripts/test-valgrind.sh
# A part of the build, and the tests of zek some times slower.
check "threads" Scripts/test-threads.sh
# The whole build, and a minute in which a model is marked, replaced and cut by many at once.
check "concurrency" env ZEK_CONCURRENCY_SECONDS=60 Scripts/test.sh -R MarkConcurrencyTest
# Three cross compilers with their libraries, the whole build three times, all tests under emulation.
check "foreign processors" Scripts/test-foreign.sh
# A cross compiler with wine, the whole build, and a minute or two of both programs under wine.
check "Windows" Scripts/test-windows.sh
# A build of a part, and the tests that reach each mistake, for about an hour.
check "mutations" Scripts/mutate.py
# Ten minutes for each of six fuzzers.
check "fuzzers" Scripts/fuzz.sh 600
# 1.5 GB of models, and a machine that does nothing else meanwhile.
check "benchmarks" Scripts/benchmark.sh
# 10,000 models with their variants, and a browser.
check "report" Scripts/check-report.sh
# A cluster of one node, for a minute.
check "Slurm" Scripts/check-slurm.sh
summarise
