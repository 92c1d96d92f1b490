# Front door. The CMake presets in CMakePresets.json do the real work.
#   make demo    install what is missing, build, run the demo
#   make test    build (warnings as errors) and run every test
#   make bench   build and run the benchmarks against the installed peers
#   make asan    build and run the tests under AddressSanitizer + UndefinedBehaviorSanitizer
#   make clang   build and run the tests with clang
#   make fuzz    build the libFuzzer targets with clang
#   make format  apply clang-format to the sources
JOBS ?= $(shell nproc)

.PHONY: all deps demo test bench asan clang fuzz format clean

all: test

deps:
	@scripts/install-deps.sh

demo: deps
	cmake --preset release >/dev/null
	cmake --build --preset release -j $(JOBS) --target math_demo
	./build/release/examples/math_demo

test: deps
	cmake --preset release >/dev/null
	cmake --build --preset release -j $(JOBS)
	ctest --preset release -j $(JOBS)

bench:
	@scripts/install-deps.sh bench
	cmake --preset release >/dev/null
	cmake --build --preset release -j $(JOBS)
	@for b in build/release/bench/bench_*; do echo "== $$b"; $$b --benchmark_min_time=0.1 --benchmark_repetitions=5 \
	  --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true; done

asan: deps
	cmake --preset asan >/dev/null
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan -j $(JOBS)

clang:
	@scripts/install-deps.sh fuzz
	cmake --preset clang >/dev/null
	cmake --build --preset clang -j $(JOBS)
	ctest --preset clang -j $(JOBS)

fuzz:
	@scripts/install-deps.sh fuzz
	cmake --preset fuzz >/dev/null
	cmake --build --preset fuzz -j $(JOBS)

format:
	find math tests bench examples fuzz -name '*.h' -o -name '*.cpp' | xargs clang-format -i

clean:
	rm -rf build
