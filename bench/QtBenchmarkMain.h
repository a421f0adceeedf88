// The main of a benchmark that paints: fonts and painting need a GUI
// application, and the offscreen platform serves without a display.
#pragma once

#include <benchmark/benchmark.h>

#include <QGuiApplication>

#define KESTROW_QT_BENCHMARK_MAIN()                                                             \
  int main(int argc, char** argv) {                                                             \
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen"); \
    QGuiApplication app(argc, argv);                                                            \
    benchmark::Initialize(&argc, argv);                                                         \
    benchmark::RunSpecifiedBenchmarks();                                                        \
    benchmark::Shutdown();                                                                      \
    return 0;                                                                                   \
  }
