#pragma once

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

// Runs a step many times in batches and prints the median time of one step in milliseconds.
template<typename Step>
void runBenchmark(const char *name, int batchSize, Step step, int batches = 31)
{
    std::vector<double> perStep;
    perStep.reserve(size_t(batches));
    step(); // warm caches and lazy initialisation
    for (int b = 0; b < batches; ++b) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < batchSize; ++i)
            step();
        perStep.push_back(double(timer.nsecsElapsed()) / 1e6 / batchSize);
    }
    std::sort(perStep.begin(), perStep.end());
    std::printf("%s %.6f\n", name, perStep[perStep.size() / 2]);
    std::fflush(stdout);
}
