#include "core/StartUp.h"

int main(int argc, char** argv) {
    return startTornvale(argc, argv);
}
