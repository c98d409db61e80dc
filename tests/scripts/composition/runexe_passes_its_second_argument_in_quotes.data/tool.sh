#!/bin/sh
{ echo "$# parameters"; echo "$1"; } > making.txt
mv making.txt made.txt
