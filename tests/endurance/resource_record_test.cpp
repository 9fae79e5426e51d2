// Growth must be told apart from fluctuation.
#include "tests/endurance/resource_record.hpp"

#include <unistd.h>

#include <thread>

#include <gtest/gtest.h>

#include "tests/endurance/process_resources.hpp"

namespace halcyra {
namespace {

std::vector<ProcessResources> level_samples() {
  return std::vector<ProcessResources>(100, {100000, 20, 8, 0});
}

std::string growth_of(const std::vector<ProcessResources>& samples,
                      Memory memory = Memory::kCompared) {
  return growth(periods_of(samples, 10), memory);
}

TEST(ResourceRecord, LevelRunDoesNotGrow) { EXPECT_EQ(growth_of(level_samples()), ""); }

TEST(ResourceRecord, NothingMeasuredIsNotLevel) { EXPECT_NE(growth_of({}), ""); }

TEST(ResourceRecord, WhatComesAndGoesIsNoGrowth) {
  std::vector<ProcessResources> samples = level_samples();
  for (std::size_t i = 91; i < 95; ++i) samples[i] = {180000, 25, 10, 2};
  EXPECT_EQ(growth_of(samples), "");
}

TEST(ResourceRecord, MemoryThatStaysIsGrowth) {
  std::vector<ProcessResources> samples = level_samples();
  for (std::size_t i = 90; i < 100; ++i) samples[i].resident_kib = 102100;
  EXPECT_EQ(growth_of(samples), "resident memory (KiB) grew from 100000 to 102100\n");
  EXPECT_EQ(growth_of(samples, Memory::kLeftOut), "");
}

TEST(ResourceRecord, OneMoreOfAnythingIsGrowth) {
  for (long ProcessResources::*value :
       {&ProcessResources::descriptors, &ProcessResources::threads, &ProcessResources::children}) {
    std::vector<ProcessResources> samples = level_samples();
    for (std::size_t i = 50; i < 100; ++i) samples[i].*value += 1;
    EXPECT_NE(growth_of(samples), "");
    EXPECT_NE(growth_of(samples, Memory::kLeftOut), "");
  }
}

TEST(ResourceRecord, FewSamplesMakeFewPeriods) {
  EXPECT_EQ(periods_of(std::vector<ProcessResources>(3), 10).size(), 3U);
}

TEST(ProcessResources, SeesWhatThisProcessHolds) {
  const std::optional<ProcessResources> before = read_resources(getpid());
  ASSERT_TRUE(before);
  EXPECT_GT(before->resident_kib, 1000);

  const int descriptor = dup(0);
  const pid_t child = fork();
  if (child == 0) pause();
  std::optional<ProcessResources> during;
  std::thread([&during] { during = read_resources(getpid()); }).join();
  kill(child, SIGKILL);
  close(descriptor);
  ASSERT_TRUE(during);
  EXPECT_EQ(during->descriptors, before->descriptors + 1);
  EXPECT_EQ(during->threads, before->threads + 1);
  EXPECT_EQ(during->children, before->children + 1);
}

TEST(ProcessResources, ChildThatNobodyWaitedForCounts) {
  const long before = read_resources(getpid())->children;
  const pid_t child = fork();
  if (child == 0) _exit(0);
  EXPECT_EQ(read_resources(getpid())->children, before + 1);
}

TEST(ProcessResources, OfNoProcessAreNothing) { EXPECT_FALSE(read_resources(-1)); }

}  // namespace
}  // namespace halcyra
