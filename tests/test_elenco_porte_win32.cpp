// A port in HARDWARE\DEVICEMAP\SERIALCOMM is listed with its number and device
// name (writing there takes an administrator; without one, skipped).

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "velmarin.h"

namespace {

TEST(ElencoPorteWin32, APortOfTheSerialMapIsListed)
{
    HKEY chiave;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, "HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, nullptr, REG_OPTION_VOLATILE,
                        KEY_READ | KEY_WRITE, nullptr, &chiave, nullptr) != ERROR_SUCCESS)
        GTEST_SKIP() << "HARDWARE\\DEVICEMAP\\SERIALCOMM cannot be written here";
    const char nome[] = "\\Device\\VelmarinProva", porta[] = "COM77";
    ASSERT_EQ(RegSetValueExA(chiave, nome, 0, REG_SZ, reinterpret_cast<const BYTE*>(porta), sizeof porta), ERROR_SUCCESS);
    std::vector<velmarin_port_info> porte(static_cast<std::size_t>(velmarin_list_ports(nullptr, 0)));
    porte.resize(static_cast<std::size_t>(velmarin_list_ports(porte.data(), static_cast<int>(porte.size()))));
    RegDeleteValueA(chiave, nome);
    RegCloseKey(chiave);
    int trovate = 0;
    for (const auto& p : porte) {
        if (p.port != 77) continue;
        ++trovate;
        EXPECT_STREQ(p.device, "\\\\.\\COM77");
        EXPECT_STREQ(p.description, "serial port (\\Device\\VelmarinProva)");
        EXPECT_EQ(p.busy, 0) << "no such device: nobody holds it";
    }
    EXPECT_EQ(trovate, 1);
}

}  // namespace
