# For a Makefile that includes it: the target process-models processes every model below
# MODELS_FOLDER, whose path must be free of blanks, and MODEL_STAMPS are the stamps of these.
#
# Times do not show everything that process-model.sh sees, so it is called for each model. It touches
# the stamp when there was something to do, and what depends on the stamp is made again only then.
MODELS_FOLDER ?= models
MODEL_STAMPS := $(addsuffix .stamp,$(shell find $(MODELS_FOLDER) -type f -name '*.zek'))
ifeq ($(MODEL_STAMPS),)
$(error There are no models below $(MODELS_FOLDER))
endif
PROCESS_MODEL := $(dir $(abspath $(lastword $(MAKEFILE_LIST))))../process-model.sh

process-models: $(MODEL_STAMPS)

%.zek.stamp: %.zek always-look
	@$(PROCESS_MODEL) $<

always-look:

.PHONY: process-models always-look
