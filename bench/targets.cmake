# One call a program.
cindertop_bench(census SOURCES ProcessCensusBench.cpp LINKS cindertop_cpu cindertop_platform_linux)
cindertop_bench(graphics SOURCES GraphicsBench.cpp LINKS cindertop_cpu cindertop_platform_linux)
cindertop_bench(aggregation SOURCES AggregationBench.cpp LINKS cindertop_cpu)
cindertop_bench(tick SOURCES TickBench.cpp LINKS cindertop_app cindertop_platform_linux)
cindertop_bench(persistence SOURCES PersistenceBench.cpp LINKS cindertop_persistence)
