# The commands of daily work; `make help` lists them. Each one first sees to it that the machine has what it needs.
SHELL := bash
.SHELLFLAGS := -euo pipefail -c
.ONESHELL:
.SILENT:
.DEFAULT_GOAL := help
.PHONY: help test demo designer docs bench fuzz package format hooks tidy clean

# How long `make fuzz` runs each fuzzer
SECONDS ?= 600

# Sets presets to the Windows builds whose programs can be run here, the reference last.
bootstrap = status=0; tools/bootstrap || status=$$?; \
	case $$status in \
	0) presets="x86_64 i686" ;; \
	2) presets=x86_64; echo "going on with the 64-bit programs alone" ;; \
	*) exit 1 ;; esac

help:
	sed -n 's/^\([a-z]*\):.*## /make \1\t/p' Makefile

test: ## build and run all tests: natively under sanitizers, then as 64- and 32-bit Windows programs
	$(bootstrap)
	tools/run-tests native $$presets

demo: ## show the component gallery; without a display take pictures of it into build/demo
	$(bootstrap)
	tools/run-demo $${presets##* }

designer: ## show the form designer on the gallery's forms; without a display take pictures of it into build/designer
	$(bootstrap)
	tools/run-designer $${presets##* }

docs: ## make the pages and the reference into build/docs
	tools/bootstrap || [ $$? = 2 ]
	tools/make-docs

bench: ## measure
	$(bootstrap)
	preset=$${presets##* }
	cmake --preset $$preset
	cmake --build --preset $$preset --target kx_bench
	# A display of its own: nothing is left from the tests there.
	export KX_WINE_DIR=build/.wine-bench
	tools/wine-run --stop
	tools/wine-run build/$$preset/bench/kx_bench.exe
	tools/wine-run --stop

fuzz: ## run both fuzzers side by side, SECONDS seconds each (600); what they find stays in build/fuzz
	$(bootstrap)
	cmake --preset native -B build/fuzz -DKX_FUZZ_SECONDS=$(SECONDS)
	cmake --build build/fuzz --target fuzz_text fuzz_binary
	ctest --test-dir build/fuzz -L fuzz --parallel 2 --verbose --no-tests=error

package: ## make the archives, for each word size, in build/packages
	$(bootstrap)
	for preset in $$presets; do
		cmake --preset $$preset -B build/packages/$$preset -DKX_UNITY_LIBRARIES=OFF
		cmake --build build/packages/$$preset --target kx_installed
		cpack --config build/packages/$$preset/CPackConfig.cmake -B build/packages
	done
	rm -rf build/packages/_CPack_Packages
	ls -l build/packages

format: ## give all sources the common layout
	tools/bootstrap --dev || [ $$? = 2 ]
	git ls-files -co --exclude-standard '*.h' '*.cpp' | xargs -r clang-format -i

hooks: ## have git format what is committed
	tools/bootstrap --dev || [ $$? = 2 ]
	git config core.hooksPath .githooks

tidy: ## static analysis of all sources and scripts
	tools/bootstrap --dev || [ $$? = 2 ]
	tools/run-tidy

clean: ## end what runs in the background and remove the build folder
	tools/wine-run --stop
	rm -rf build
