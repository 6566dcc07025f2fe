#include "Program.h"

int main(int argc, char** argv) {
    return qormodel::runProgram(argc, argv);
}
