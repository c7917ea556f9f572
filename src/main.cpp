#include "platform/forms/application.h"

int main(int argc, char** argv) {
    forms::Application application(argc, argv);
    return 0;
}
