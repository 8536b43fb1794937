# Converts every description of the current directory that has changed.
#
#   make -j 4 -k -f convert.mk              include files
#   make -j 4 -k -f convert.mk packages     packages
#
# OPTIONS goes to the program: make -f convert.mk OPTIONS='-z -l sigTrak=2017.06.0'

descriptions := $(wildcard *.a2l)

.PHONY: all packages
all: $(descriptions:.a2l=.cfginclude)
packages: $(descriptions:.a2l=.zpki)

# What is not whole must not look as if it were: only the last line tells of a full disk.
%.cfginclude: %.a2l sigtrakVersions.xml
	quillmark convert $< $@.new $(OPTIONS) >$*.log 2>&1 || { cat $*.log; exit 1; }
	tail -n 1 $@.new | grep -q '^</sigtrak_include>' || { echo "$@ is not whole"; exit 1; }
	mv $@.new $@

# The directory keeps apart what packages of the same second stage, and the include file, which the
# program writes and removes again.
%.zpki: %.a2l sigtrakVersions.xml
	own=$$(mktemp -d) && TMPDIR=$$own \
	    quillmark convert $< $$own/$*.cfginclude -zpki $@ $(OPTIONS) >$*.log 2>&1; \
	status=$$?; rm -rf $$own; [ $$status -eq 0 ] || { cat $*.log; exit $$status; }
