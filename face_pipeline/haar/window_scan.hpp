// Scans rows of windows of a layer with a cascade.
#pragma once

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Afterwards, scratch.passed holds the windows that pass all stages, in no particular order. All of
// them find the same; the machine must have the instruction set that the name says.
using WindowScan = void(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                        const ScanScratch& scratch);

WindowScan scan_windows_baseline;
WindowScan scan_windows_avx2;
WindowScan scan_windows_avx512;
WindowScan scan_windows_neon;

}  // namespace halcyra::haar
