# The commands of the house; `make help` lists them. Each is one script or one preset: nothing clever here.
# SPDX-License-Identifier: LGPL-2.1-or-later
.DEFAULT_GOAL := help
.PHONY: help demo check test build install uninstall deb bench screenshots format tidy packages clean

help: ## Lists the commands.
	@sed -n 's/^\([a-z]*\):.*## \(.*\)/  make \1\t\2/p' $(MAKEFILE_LIST) | expand -t 20

demo: packages build ## Installs what is missing, builds, faxes a letter over an emulated device into demo/, and opens the desktop.
	tools/demo

check: ## Checks what was changed since the last commit: formatting, words, layers, and the changed rooms' tests.
	tools/check

test: ## Installs what is missing, builds in every configuration, and runs all tests and checks.
	tools/run-tests

build: ## Builds the release; the programs are in build/release/stage/.
	cmake --preset release -D BUILD_TESTING=OFF -D BRAMBLECOR_FETCH_SOURCES=ON
	cmake --build --preset release

PREFIX ?= /usr/local
install: ## Installs what make build built, below PREFIX (/usr/local) and DESTDIR.
	tools/install "$(PREFIX)"

uninstall: ## Removes what make install installed there, and nothing else.
	tools/uninstall "$(PREFIX)"

deb: ## Makes Debian packages in build/deb/.
	tools/make-deb

BENCH_FLAGS ?= --benchmark_repetitions=5 --benchmark_display_aggregates_only=true
bench: ## Builds the benchmarks and runs them; docs/performance.md says how to read the figures.
	cmake --preset bench
	cmake --build --preset bench
	build/bench/bench/component_bench $(BENCH_FLAGS)
	build/bench/bench/driver_bench $(BENCH_FLAGS)
	build/bench/bench/device_bench $(BENCH_FLAGS)
	tests/driver/desktop/with-display build/bench/bench/desktop_bench $(BENCH_FLAGS)

screenshots: build ## Makes the pictures of all windows in docs/images/.
	tools/screenshots

format: ## Formats all sources.
	tools/format

tidy: ## Runs clang-tidy over the sources that changed since it found nothing in them.
	tools/tidy

packages: ## Installs the Debian packages that are missing.
	tools/install-packages

clean: ## Removes everything that was built.
	rm -rf build demo
