// What a running process holds: memory, descriptors, threads and children.
#pragma once

#include <sys/types.h>

#include <optional>

namespace halcyra {

struct ProcessResources {
  long resident_kib = 0;  // memory
  long descriptors = 0;   // open files, pipes and sockets
  long threads = 0;
  long children = 0;  // child processes, zombies included
};

// Nothing when there is no such process.
std::optional<ProcessResources> read_resources(pid_t process);

}  // namespace halcyra
