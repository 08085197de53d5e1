#include "SoundEngine.h"
