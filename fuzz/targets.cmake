# One line a target.
cindertop_fuzz(machine SOURCES machineFuzz.cpp LINKS cindertop_platform_linux)
cindertop_fuzz(sysfs SOURCES sysfsFuzz.cpp LINKS cindertop_platform_linux)
cindertop_fuzz(processes SOURCES processesFuzz.cpp LINKS cindertop_platform_linux)
cindertop_fuzz(propertylist SOURCES propertylistFuzz.cpp LINKS cindertop_support)
cindertop_fuzz(history SOURCES historyFuzz.cpp LINKS cindertop_persistence)
cindertop_fuzz(settings SOURCES settingsFuzz.cpp LINKS cindertop_persistence)
cindertop_fuzz(diagnostics SOURCES diagnosticsFuzz.cpp LINKS cindertop_persistence)
