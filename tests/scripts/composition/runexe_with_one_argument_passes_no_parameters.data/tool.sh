#!/bin/sh
echo "$# parameters" > making.txt
mv making.txt made.txt
