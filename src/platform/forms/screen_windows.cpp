#include "platform/forms/application.h"

bool forms::HasScreen() {
    return true;
}
