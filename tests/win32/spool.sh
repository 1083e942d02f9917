#!/bin/sh
# Keeps a print job, which comes on standard input, in a file; under its own name only when it is complete.
folder=${VAXEL_SPOOL_FOLDER:?names the folder for print jobs}
job=$(mktemp "$folder/job-XXXXXX") && cat >"$job" && mv "$job" "$job.ps"
