#include "app/window_program.h"

int main(int count, char** values) {
    return bw::RunWindowProgram(count, values, bw::BuiltInDeployment());
}
