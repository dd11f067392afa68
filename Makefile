# The commands of daily work. `make` alone lists them.
.DEFAULT_GOAL := help
.PHONY: help setup run test bench fuzz soak lint format asan tsan coverage clean

# Seconds that each fuzz target runs under `make fuzz`.
FUZZ_SECONDS ?= 60
# Processes that `make soak` kills.
SOAK_KILLS ?= 300

help: ## this list
	@awk -F ':.*## ' '/^[a-z-]+:.*## / { printf "  make %-10s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

setup: ## install every Debian package that any of these commands needs
	@scripts/setup develop

run: ## build it and show how hot this machine runs, and why (Ctrl-C ends it)
	@scripts/setup build
	@scripts/build release cindertop cindertopctl
	@scripts/run

test: ## build and run the tests
	@scripts/setup test
	@scripts/build debug
	@ctest --test-dir build/debug --output-on-failure -j "$$(nproc)"

asan: ## the tests under the address and undefined-behaviour sanitizers
	@scripts/setup test
	@scripts/build asan
	@ctest --test-dir build/asan --output-on-failure -j "$$(nproc)"

tsan: ## the tests under the thread sanitizer
	@scripts/setup test
	@scripts/build tsan
	@ctest --test-dir build/tsan --output-on-failure -j "$$(nproc)"

bench: ## measure the budgets; fails where one is not kept
	@scripts/setup develop
	@scripts/build bench
	@scripts/bench

fuzz: ## fuzz every parser for FUZZ_SECONDS seconds each (60)
	@scripts/setup develop
	@scripts/build fuzz
	@scripts/fuzz $(FUZZ_SECONDS)

soak: ## kill a recording process SOAK_KILLS times (300) and look at its history each time
	@scripts/setup test
	@scripts/build debug soak_history
	@build/debug/bin/soak_history $(SOAK_KILLS)

lint: ## formatting, clang-tidy, layers, shell scripts
	@scripts/setup develop
	@scripts/lint

format: ## format the sources in place
	@scripts/setup develop
	@git ls-files -z --cached --others --exclude-standard '*.h' '*.cpp' | xargs -0 clang-format-19 -i

coverage: ## line coverage of the tests
	@scripts/setup develop
	@scripts/build coverage
	@ctest --test-dir build/coverage --output-on-failure -j "$$(nproc)" >/dev/null
	@gcovr --root . --filter src/ build/coverage --exclude-throw-branches

clean: ## remove everything that was built
	@rm -rf build
