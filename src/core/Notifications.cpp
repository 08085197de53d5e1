#include "Notifications.h"
