# The two commands a user needs: `make run` and `make test`. Both install
# what is missing, configure once and build incrementally; they stay quiet
# when there is nothing to do.
BUILD_DIR ?= build
BUILD_TYPE ?= RelWithDebInfo
CTEST_ARGS ?=

.PHONY: run test build setup configure bench clean

setup:
	@bash scripts/setup.sh

configure: setup
	@[ -f $(BUILD_DIR)/build.ninja ] || cmake -S . -B $(BUILD_DIR) -G Ninja \
		-DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DFENROW_WERROR=ON > $(BUILD_DIR).configure.log 2>&1 \
		|| { cat $(BUILD_DIR).configure.log; exit 1; }

build: configure
	@cmake --build $(BUILD_DIR) -- --quiet

run: build
	@$(BUILD_DIR)/src/app/fenrow

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure --timeout 600 -j2 $(CTEST_ARGS)

bench: build
	@bash scripts/bench.sh $(BUILD_DIR)

clean:
	@rm -rf $(BUILD_DIR) $(BUILD_DIR).configure.log
