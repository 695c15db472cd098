# KxUi: Windows binaries built with MinGW-w64 and tested under Wine.
#   make test   set up what is missing, configure, build, run every suite under Wine
#   make demo   set up, build, run the gallery (snapshots into out/gallery when headless)
#   make bench  run the benchmarks
#   make clean  remove the build tree
BUILD   := build
WINERUN := KXUI_WINEPREFIX=$(CURDIR)/$(BUILD)/wineprefix $(CURDIR)/cmake/wine-run.sh
JOBS    ?= $(shell nproc)

.PHONY: all setup configure build test demo bench clean

all: build

setup:
	@tools/setup.sh

$(BUILD)/build.ninja: | setup
	cmake --preset mingw

configure: $(BUILD)/build.ninja

build: configure
	cmake --build $(BUILD) -j $(JOBS)

test: build
	@status=0; cd $(BUILD) && ctest --output-on-failure || status=$$?; \
	$(WINERUN) --stop; exit $$status

demo: build
	@tools/demo.sh $(BUILD)

bench: build
	@tools/bench.sh $(BUILD)

clean:
	-@[ -d $(BUILD)/wineprefix ] && $(WINERUN) --stop || true
	rm -rf $(BUILD) out
