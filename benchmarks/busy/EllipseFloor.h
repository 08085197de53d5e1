#pragma once

/// Runs as a Qt program with a translucent window of the panel's size that repaints one flat
/// ellipse, as large as the window, 60 times a second.
int runEllipseFloor(int argc, char *argv[]);
