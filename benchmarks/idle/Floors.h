#pragma once

/// Runs as an empty Qt program with a translucent window of the panel's size.
int runWindowFloor(int argc, char *argv[]);

/// The same, polling the pointer 60 times a second and doing nothing with it.
int runPollFloor(int argc, char *argv[]);
