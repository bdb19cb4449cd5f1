#pragma once
#include <cstdint>
namespace LCD {
namespace ProtocolImpl {
struct s_BarCalibration
{
    int32_t words[3];
};
struct s_NetworkPortLink
{
    int32_t words[5];
};
struct s_NodeUSB
{
    int32_t words[16];
};
}
}
