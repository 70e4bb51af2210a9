# The targets people type; CMake does the work. `make help` lists them.

BUILD := build
JOBS := $(shell nproc)

BUILD_PACKAGES := g++ cmake ninja-build pkg-config binutils-mingw-w64-x86-64 libsdl2-dev libpixman-1-dev \
  libpango1.0-dev libcairo2-dev libfontconfig-dev libpng-dev zlib1g-dev libxml2-dev libicu-dev nlohmann-json3-dev
RUN_PACKAGES := fonts-dejavu-core fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji xdg-utils
TEST_PACKAGES := libgtest-dev libx11-dev libxtst-dev xvfb xclip
BENCH_PACKAGES := libbenchmark-dev libx11-dev libxtst-dev xvfb
FORMAT_PACKAGES := git clang-format
LINT_PACKAGES := $(FORMAT_PACKAGES) clang-tidy
SEAM_PACKAGES := git g++-mingw-w64-x86-64-posix
ARTWORK_PACKAGES := librsvg2-bin netpbm icoutils fonts-dejavu-core
FUZZ_PACKAGES := clang libclang-rt-dev llvm
PACKAGE_PACKAGES := dpkg-dev file gzip man-db groff lintian desktop-file-utils appstream

.PHONY: help build run test asan tsan trials fuzz faults bench tour artwork lint seam format install package clean

help: ## list these targets
	@awk -F ':.*## ' '/^[a-z]+:.*## / { printf "  make %-8s  %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

build: ## the release build: build/quillmark and build/quillmark-headless
	@scripts/install-packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES)
	cmake --preset release
	cmake --build $(BUILD) --target quillmark quillmark-headless compressed_documents -j $(JOBS)

run: build ## open the phone; with no display, play the tour and name its pictures
	@scripts/install-packages.sh $(RUN_PACKAGES)
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then exec $(BUILD)/quillmark; \
	else echo "There is no display here: playing the tour instead."; $(MAKE) --no-print-directory tour; fi

faults: ## play every scenario once for each call that can fail, under the sanitizers
	@scripts/install-packages.sh $(BUILD_PACKAGES) $(RUN_PACKAGES) $(TEST_PACKAGES)
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS) --target quillmark-faults
	$(BUILD)/asan/quillmark-faults

tour: build ## the program's main job, headless: pictures and the saved layout in build/tour
	@scripts/install-packages.sh $(RUN_PACKAGES)
	scripts/tour.sh $(BUILD)/quillmark-headless $(BUILD)/tour

artwork: ## render the artwork's SVG sources again
	@scripts/install-packages.sh $(ARTWORK_PACKAGES)
	scripts/render-artwork.sh

# A preset's tests: configure, build, run.
define run_tests
	@scripts/install-packages.sh $(BUILD_PACKAGES) $(RUN_PACKAGES) $(TEST_PACKAGES)
	cmake --preset $(1)
	cmake --build --preset $(1) -j $(JOBS)
	ctest --preset $(1) -j $(JOBS)
endef

test: ## build and run every test
	$(call run_tests,release)

trials: test ## the trials whole: killed 300 times, disks that fill up, threads at random
	$(BUILD)/trials/trial_kills --rounds 300
	$(BUILD)/trials/trial_threads --rounds 200

fuzz: ## every fuzzer for a minute; LONG=1: until ten minutes have brought nothing new, thirty at the most
	@scripts/install-packages.sh $(BUILD_PACKAGES) $(RUN_PACKAGES) $(FUZZ_PACKAGES)
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	scripts/fuzz.sh $(BUILD)/fuzz $(if $(LONG),--until-quiet)

# This preset builds the benchmarks, too, so that no change breaks them unseen.
asan faults: TEST_PACKAGES += $(BENCH_PACKAGES)
asan: ## every test under the address, leak and undefined-behaviour sanitizers
	$(call run_tests,asan)

tsan: ## every test under the thread sanitizer
	$(call run_tests,tsan)

bench: ## the benchmarks, each beside its baseline, and one table of their ratios: build/bench/ratios.json
	@scripts/install-packages.sh $(BUILD_PACKAGES) $(RUN_PACKAGES) $(BENCH_PACKAGES)
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS)
	scripts/bench.sh $(BUILD)/bench

lint: build ## formatting and static checks
	@scripts/install-packages.sh $(LINT_PACKAGES)
	scripts/check-format.sh
	git ls-files -- '*.cpp' ':!tests' | xargs -n 4 -P $(JOBS) clang-tidy --quiet -p $(BUILD)

seam: ## compile the program with an independent implementation of the platform's headers
	@scripts/install-packages.sh $(SEAM_PACKAGES)
	scripts/check-seam.sh $(BUILD)/seam

format: ## format the sources
	@scripts/install-packages.sh $(FORMAT_PACKAGES)
	git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format -i

install: build ## programs, data, manual pages, desktop entry, icons: DESTDIR and PREFIX are respected
	cmake --install $(BUILD) $(if $(PREFIX),--prefix $(PREFIX))

package: build ## build/package/quillmark_*.deb, checked
	@scripts/install-packages.sh $(PACKAGE_PACKAGES)
	cpack --config $(BUILD)/CPackConfig.cmake -B $(BUILD)/package
	scripts/check-package.sh $(BUILD)/package

clean: ## remove the build folder
	rm -rf $(BUILD)
