#pragma once

#include <cstddef>
#include <cstdint>

namespace LCD::ProtocolImpl {

/// A T-Bar calibration command or report. In commands, `target` and `value` are 0.
struct s_BarCalibration
{
    std::int32_t target = 0;
    std::int32_t command = 0;
    std::int32_t value = 0;
};

static_assert(sizeof(s_BarCalibration) == 12);
static_assert(offsetof(s_BarCalibration, command) == 4);

/// The link of one net port. A negative `port` means no port; a `link` other than 0 means linked.
struct s_NetworkPortLink
{
    std::int32_t header[3] = {0, 0, 0};
    std::int32_t port = 0;
    std::int32_t link = 0;
};

static_assert(sizeof(s_NetworkPortLink) == 20);
static_assert(offsetof(s_NetworkPortLink, port) == 12);
static_assert(offsetof(s_NetworkPortLink, link) == 16);

/// A node of the USB tree. Nodes of type 26 are ports. A port is linked if it is active and not blocked.
struct s_NodeUSB
{
    std::int32_t header[3] = {0, 0, 0};
    std::int32_t portId = 0;
    std::int32_t nodeType = 0;
    std::int32_t linkActive = 0;
    std::int32_t linkBlocked = 0;
    std::int32_t details[9] = {};
};

static_assert(sizeof(s_NodeUSB) == 64);
static_assert(offsetof(s_NodeUSB, portId) == 12);
static_assert(offsetof(s_NodeUSB, nodeType) == 16);
static_assert(offsetof(s_NodeUSB, linkActive) == 20);
static_assert(offsetof(s_NodeUSB, linkBlocked) == 24);

}
