// The desktop game: the view state on Qt widgets, sound through SDL2.
#include "desktop.h"

int main(int argc, char** argv) { return corvalta::app::runDesktop(argc, argv); }
