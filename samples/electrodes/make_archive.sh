#!/bin/sh
# make_archive.sh: packs the electrodes of this directory into electrodes.zip.
set -e
cd "$(dirname "$0")"
../../nmk electrode create electrodes.zip \
    --entry E101 --geometry E101/geometry.ngk --metadata E101/metadata.xml \
    --data E101/html --additional E101/holder.ngk \
    --entry E102 --geometry E102/geometry.ngk --metadata E102/metadata.xml
