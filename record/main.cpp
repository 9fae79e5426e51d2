#include "record/program.hpp"

int main(int argc, char** argv) { return halcyra::record::run_recorder(argc, argv); }
