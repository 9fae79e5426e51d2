#include "app/program.hpp"

int main(int argc, char** argv) { return halcyra::run_program(argc, argv); }
