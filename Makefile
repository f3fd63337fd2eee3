# Front door. Behind it stand ordinary CMake presets: see `cmake --list-presets`.

SHELL := /bin/bash
.SHELLFLAGS := -eu -o pipefail -c
.DEFAULT_GOAL := help
.NOTPARALLEL:

WARNINGS_AS_ERRORS ?= ON
export CTEST_PARALLEL_LEVEL ?= $(shell nproc 2>/dev/null || echo 1)

configure = cmake --preset $(1) -DZETLASER_WARNINGS_AS_ERRORS=$(WARNINGS_AS_ERRORS)

.PHONY: help job test bench sanitize fuzz format lint install-dependencies

help: ## Say what can be made
	@echo 'Targets; each installs what it needs (Debian 12, as root or through sudo):'
	@sed -nE 's/^([a-z-]+):.*## (.*)/  make \1\t\2/p' $(firstword $(MAKEFILE_LIST)) | expand -t 32
	@echo 'WARNINGS_AS_ERRORS=OFF builds with a compiler that warns where ours does not.'

job: ## Build zetlaser-job, write the part files and a preview of the example part
	scripts/install-dependencies.sh build
	$(call configure,release)
	cmake --build --preset release --target zetlaser-job
	scripts/run-example-job.sh

test: ## Build everything and run all tests
	scripts/install-dependencies.sh build test
	$(call configure,release)
	cmake --build --preset release
	ctest --preset release

bench: ## Build and run the benchmarks
	scripts/install-dependencies.sh build bench
	$(call configure,release) -DZETLASER_BUILD_BENCHMARKS=ON
	cmake --build --preset release --target bench

sanitize: ## Run all tests under the address and undefined behaviour sanitizers
	scripts/install-dependencies.sh build test
	$(call configure,sanitize)
	cmake --build --preset sanitize
	ctest --preset sanitize

fuzz: ## Run the fuzzers, FUZZ_SECONDS (60) each
	scripts/install-dependencies.sh build fuzz
	$(call configure,fuzz)
	cmake --build --preset fuzz
	scripts/fuzz.sh build/fuzz

format: ## Lay out all sources with clang-format
	scripts/install-dependencies.sh lint
	scripts/list-sources.sh | xargs clang-format -i

lint: ## Check the layout, then look through all sources with clang-tidy
	scripts/install-dependencies.sh build bench lint
	scripts/list-sources.sh | xargs clang-format --dry-run -Werror
	$(call configure,release) -DZETLASER_BUILD_BENCHMARKS=ON
	cmake --build --preset release --target all all_verify_interface_header_sets
	scripts/list-sources.sh '*.cpp' | xargs -P "$$(nproc)" -n 4 clang-tidy -p build/release --quiet

install-dependencies: ## Install all that any target needs
	scripts/install-dependencies.sh build test bench lint fuzz browser
