# The commands of daily work. `make` alone lists them.
.DEFAULT_GOAL := help
.PHONY: help setup run demo test desktop-test laptop-test package pictures bench fuzz soak lint format asan tsan coverage mutants releases-test clean

# Seconds that each fuzz target runs under `make fuzz`.
FUZZ_SECONDS ?= 60
# Whose kernel `make laptop-test` boots: what apt knows here, or a suite such as bookworm-backports.
LAPTOP_KERNEL ?= installed
# Recording processes that `make soak` kills one after the other, besides the fault tests.
SOAK_KILLS ?= 300

export CTEST_PARALLEL_LEVEL ?= $(shell nproc)
# Configures and builds, and tests where the preset does; CMakePresets.json has the steps.
work := cmake --workflow --preset

help: ## this list
	@awk -F ':.*## ' '/^[a-z-]+:.*## / { printf "  make %-14s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

setup: ## install every Debian package that any of these commands needs
	@scripts/setup develop
	@scripts/setup laptop
	@scripts/setup soak

run: ## build it and show how hot this machine runs, and why (Ctrl-C ends it)
	@scripts/setup build
	@$(work) release
	@scripts/run

demo: ## play an hour of a laptop that gets hot in a minute; nothing of this machine is measured or kept
	@scripts/setup build
	@$(work) release
	@echo "A made-up hour of a laptop without a fan, sixty times as fast. Nothing of this machine is measured or kept."
	@build/release/bin/cindertop --headless --scenario scenarios/warm-train.json --speed 60

test: ## build and run the tests
	@scripts/setup test
	@$(work) test

desktop-test: ## the program with a real panel and window manager on a screen of its own; pictures in build/pictures
	@scripts/setup desktop
	@$(work) desktop
	@tests/desktop/first-window-demo build/debug build/pictures
	@tests/desktop/program-test build/debug
	@tests/desktop/label-test build/debug
	@tests/desktop/window-test build/debug

laptop-test: ## the program on an emulated laptop with Debian's own kernel, which heats, throttles and cools (3 minutes)
	@scripts/setup laptop
	@$(work) release
	@$(work) desktop
	@tests/virtual-laptop/laptop-test build/release build/debug $(LAPTOP_KERNEL)

package: ## build the Debian packages into build/package
	@scripts/setup package
	@scripts/package

pictures: ## take the documents' pictures from the program
	@scripts/setup desktop
	@$(work) release
	@scripts/pictures

asan: ## the tests under the address and undefined-behaviour sanitizers
	@scripts/setup test
	@$(work) asan

tsan: ## the tests under the thread sanitizer
	@scripts/setup test
	@$(work) tsan

bench: ## measure the budgets; fails where one is not kept
	@scripts/setup develop
	@scripts/setup desktop
	@$(work) bench

fuzz: ## fuzz every parser for FUZZ_SECONDS seconds each (60), FUZZ_JOBS at a time (one a processor)
	@scripts/setup develop
	@$(work) fuzz
	@scripts/fuzz $(FUZZ_SECONDS)

soak: ## put the program through every fault a machine can have: full disk, kills, lost buses, ... (10 minutes)
	@scripts/setup soak
	@$(work) release
	@$(work) debug
	@tests/faults/run build/release build/debug $(SOAK_KILLS)

lint: ## formatting, clang-tidy, layers, shell scripts
	@scripts/setup develop
	@scripts/lint

format: ## format the sources in place
	@scripts/setup develop
	@git ls-files -z --cached --others --exclude-standard '*.h' '*.cpp' | xargs -0 clang-format-19 -i

coverage: ## line coverage of the tests; fails where rules and persistence have less than 95 %
	@scripts/setup develop
	@[ ! -d build/coverage ] || find build/coverage -name '*.gcda' -delete
	@$(work) coverage
	@gcovr --root . --filter src/ build/coverage --exclude-throw-branches
	@gcovr --root . --filter 'src/(thermal|context|cpu|assistant|persistence)/' build/coverage \
		--exclude-throw-branches --fail-under-line 95

mutants: ## break the rules a line at a time in a copy; each of tests/mutants.txt has to be found by a test (45 minutes)
	@scripts/setup develop
	@scripts/mutants

releases-test: ## make run, test, lint and package in clean roots of Debian 12 and 13 (as root, hours, 15 GB)
	@scripts/setup develop
	@scripts/releases-test

clean: ## remove everything that was built
	@rm -rf build
