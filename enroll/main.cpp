#include "enroll/program.hpp"

int main(int argc, char** argv) { return halcyra::run_enroll(argc, argv); }
