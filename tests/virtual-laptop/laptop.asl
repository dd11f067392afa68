/*
 * What a laptop has and QEMU's q35 machine lacks: a thermal zone with trips, a processor that can be throttled in four
 * states, a second zone whose passive trip cools nothing that the kernel knows, a mains adapter, a battery and a lid. Their readings are bytes in a page of memory that the kernel is told to
 * leave alone (memmap=4K$0x30000000): a script in the guest writes them through /dev/mem, one byte at a time, so that
 * no reader ever sees half of a change.
 */
DefinitionBlock ("laptop.aml", "SSDT", 2, "CINDER", "LAPTOP", 1)
{
    External (\_SB.CPUS.C000, DeviceObj)

    Scope (\_SB)
    {
        OperationRegion (RDGS, SystemMemory, 0x30000000, 6)
        Field (RDGS, ByteAcc, NoLock, Preserve)
        {
            DEGC, 8,    // of the processor's zone, in degrees Celsius
            CHRG, 8,    // of the battery, in percent
            MAIN, 8,    // 1 while the adapter has power
            LIDO, 8,    // 1 while the lid is open
            DEGB, 8,    // of the board's zone, in degrees Celsius
            RATE, 8     // at which the battery is charged or discharged, in tenths of an ampere
        }

        Device (ADP1)
        {
            Name (_HID, "ACPI0003")
            Name (_PCL, Package () { \_SB })
            Method (_PSR) { Return (MAIN) }
        }

        Device (BAT0)
        {
            Name (_HID, EisaId ("PNP0C0A"))
            Name (_UID, 0)
            Name (_PCL, Package () { \_SB })
            Name (_STA, 0x1F)
            // 5000 mAh by design, 4000 mAh left of them, 11.4 V: a percent is 40 mAh.
            Method (_BIF)
            {
                Return (Package ()
                {
                    1, 5000, 4000, 1, 11400, 400, 160, 40, 40, "Laptop", "1", "LION", "Cindertop"
                })
            }
            Method (_BST)
            {
                Local0 = Package () { 1, 0, 0, 11400 }
                Local0 [1] = RATE * 100
                Local0 [2] = CHRG * 40
                If (MAIN)
                {
                    If (CHRG < 100) { Local0 [0] = 2 }
                    Else { Local0 [0] = 0 }
                }
                Return (Local0)
            }
        }

        Device (LID0)
        {
            Name (_HID, EisaId ("PNP0C0D"))
            Method (_LID) { Return (LIDO) }
        }
    }

    // Temperatures are tenths of a kelvin, times tenths of a second.
    Scope (\_TZ)
    {
        ThermalZone (TZ00)
        {
            Method (_TMP) { Return (\_SB.DEGC * 10 + 2732) }
            Name (_PSV, 3582)    //  85 °C: the governor throttles
            Name (_HOT, 3782)    // 105 °C
            Name (_CRT, 3932)    // 120 °C: the kernel powers off
            Name (_PSL, Package () { \_SB.CPUS.C000 })
            Name (_TC1, 2)
            Name (_TC2, 3)
            Name (_TSP, 30)      // between two steps of the governor
            Name (_TZP, 30)      // newer kernels take no zone that is read less often while it throttles
        }

        // The kernel takes a passive trip only with a list of devices. It has no cooling device for this one.
        ThermalZone (TZ01)
        {
            Method (_TMP) { Return (\_SB.DEGB * 10 + 2732) }
            Name (_PSV, 3332)    //  60 °C
            Name (_CRT, 3932)    // 120 °C
            Name (_PSL, Package () { \_SB.ADP1 })
            Name (_TC1, 2)
            Name (_TC2, 3)
            Name (_TSP, 30)
            Name (_TZP, 30)
        }
    }

    // Duty cycles of 100, 75, 50 and 25 %. Port 0x80 takes every byte and does nothing: the processor keeps its speed.
    Scope (\_SB.CPUS.C000)
    {
        Name (_PTC, Package ()
        {
            ResourceTemplate () { Register (SystemIO, 8, 0, 0x80) },
            ResourceTemplate () { Register (SystemIO, 8, 0, 0x80) }
        })
        Name (_TSS, Package ()
        {
            Package () { 100, 1000, 0, 0, 0 },
            Package () { 75, 750, 0, 2, 0 },
            Package () { 50, 500, 0, 4, 0 },
            Package () { 25, 250, 0, 6, 0 }
        })
        Name (_TPC, 0)
        Name (_TSD, Package () { Package () { 5, 0, 0, 0xFD, 1 } })
    }
}
