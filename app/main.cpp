#include "app/control_center.hpp"

int main(int argc, char** argv) { return halcyra::run_control_center(argc, argv); }
