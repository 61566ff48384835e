# The two commands a user needs: `make run` and `make test`. Both install
# what is missing, configure once and build incrementally; they stay quiet
# when there is nothing to do.
BUILD_DIR ?= build
# Line tables and functions only (-g1): enough for a profile or a
# backtrace, and a quarter less compile time than full debug information.
BUILD_TYPE ?= RelWithDebInfo
CTEST_ARGS ?=
# The core library and its tests again under AddressSanitizer and
# UndefinedBehaviorSanitizer, as part of `make test`.
ASAN_DIR ?= build-asan
# `make fuzz`: the libFuzzer targets of fuzz/, built with clang.
FUZZ_DIR ?= build-fuzz
FUZZ_SECONDS ?= 60
FUZZ_JOBS ?= 1
FUZZ_TARGETS ?=
# `make crash-test`: how many times the program is killed mid-write.
CRASH_KILLS ?= 1000
# `make install`: where Fenrow goes; PREFIX/share must be one of the
# desktop's data folders ($XDG_DATA_HOME or $XDG_DATA_DIRS).
PREFIX ?= $(HOME)/.local

.PHONY: run test test-asan build setup configure bench fuzz crash-test clean install uninstall

setup:
	@bash scripts/setup.sh

configure: setup
	@[ -f $(BUILD_DIR)/build.ninja ] || cmake -S . -B $(BUILD_DIR) -G Ninja \
		-DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG" \
		-DFENROW_WERROR=ON > $(BUILD_DIR).configure.log 2>&1 \
		|| { cat $(BUILD_DIR).configure.log; exit 1; }

build: configure
	@cmake --build $(BUILD_DIR) -- --quiet

run: build
	@$(BUILD_DIR)/src/app/fenrow

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure --timeout 600 -j2 $(CTEST_ARGS)
	@$(MAKE) --no-print-directory test-asan

# Only what the sanitizer run needs is built: the core and its tests,
# unoptimised and with line tables only (all a report needs), which builds
# fastest. A memory error, a leak or undefined behaviour fails the test it
# happens in.
test-asan: setup
	@[ -f $(ASAN_DIR)/build.ninja ] || cmake -S . -B $(ASAN_DIR) -G Ninja \
		-DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-g1 \
		-DFENROW_WERROR=ON -DFENROW_SANITIZE=ON -DFENROW_BUILD_BENCH=OFF \
		> $(ASAN_DIR).configure.log 2>&1 || { cat $(ASAN_DIR).configure.log; exit 1; }
	@cmake --build $(ASAN_DIR) --target fenrow-core-tests -- --quiet
	@cd $(ASAN_DIR)/tests/core && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
		ctest --output-on-failure --timeout 600 -j2 $(CTEST_ARGS)

fuzz:
	@bash scripts/setup.sh fuzz
	@[ -f $(FUZZ_DIR)/build.ninja ] || CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -G Ninja \
		-DCMAKE_BUILD_TYPE=RelWithDebInfo -DFENROW_WERROR=ON -DFENROW_FUZZ=ON \
		-DFENROW_BUILD_TESTS=OFF -DFENROW_BUILD_BENCH=OFF > $(FUZZ_DIR).configure.log 2>&1 \
		|| { cat $(FUZZ_DIR).configure.log; exit 1; }
	@cmake --build $(FUZZ_DIR) --target fenrow-fuzzers -- --quiet
	@bash fuzz/run.sh $(FUZZ_DIR) $(FUZZ_SECONDS) $(FUZZ_JOBS) $(FUZZ_TARGETS)

crash-test: configure
	@BUILD_DIR=$(BUILD_DIR) bash scripts/crash-test.sh $(CRASH_KILLS)

# Installs like a desktop application (the programs, launcher entries,
# metainfo and icons) and tells the desktop. What was installed is kept
# apart from the build's own install_manifest.txt, which any other
# `cmake --install` (the packaging test's, say) overwrites.
install: build
	@cmake --install $(BUILD_DIR) --prefix "$(PREFIX)" > /dev/null
	@cp $(BUILD_DIR)/install_manifest.txt $(BUILD_DIR)/make-install-manifest.txt
	@bash scripts/register-desktop.sh "$(PREFIX)"
	@echo "Fenrow is installed in $(PREFIX)."

uninstall:
	@[ -f $(BUILD_DIR)/make-install-manifest.txt ] || { echo "Nothing was installed with make install."; exit 1; }
	@xargs -d '\n' rm -f < $(BUILD_DIR)/make-install-manifest.txt
	@rm $(BUILD_DIR)/make-install-manifest.txt
	@! command -v update-desktop-database >/dev/null || update-desktop-database -q "$(PREFIX)/share/applications"
	@echo "Fenrow is removed from $(PREFIX)."

bench: build
	@bash scripts/bench.sh $(BUILD_DIR)

clean:
	@rm -rf $(BUILD_DIR) $(BUILD_DIR).configure.log $(ASAN_DIR) $(ASAN_DIR).configure.log \
		$(FUZZ_DIR) $(FUZZ_DIR).configure.log
