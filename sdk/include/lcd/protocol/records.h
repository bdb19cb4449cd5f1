#pragma once

#include <cstddef>
#include <cstdint>

namespace LCD::ProtocolImpl {

/// A T-Bar calibration command or report.
struct s_BarCalibration
{
    std::int32_t target = 0;  ///< 0 in commands
    std::int32_t command = 0; ///< number of the calibration step
    std::int32_t value = 0;   ///< 0 in commands; in reports, percent of the step that are done
};

static_assert(sizeof(s_BarCalibration) == 12);
static_assert(offsetof(s_BarCalibration, command) == 4);

/// The link of one net port.
struct s_NetworkPortLink
{
    std::int32_t header[3] = {0, 0, 0}; ///< the component doesn't read it
    std::int32_t port = 0;              ///< counted from 0; a negative number means no port
    std::int32_t link = 0;              ///< linked if it isn't 0
};

static_assert(sizeof(s_NetworkPortLink) == 20);
static_assert(offsetof(s_NetworkPortLink, port) == 12);
static_assert(offsetof(s_NetworkPortLink, link) == 16);

/// A node of the USB tree. A port is linked if it is active and not blocked.
struct s_NodeUSB
{
    std::int32_t header[3] = {0, 0, 0}; ///< the component doesn't read it
    std::int32_t portId = 0;            ///< number of the port
    std::int32_t nodeType = 0;          ///< 26: the node is a port
    std::int32_t linkActive = 0;        ///< active if it isn't 0
    std::int32_t linkBlocked = 0;       ///< blocked if it isn't 0
    std::int32_t details[9] = {};       ///< the component doesn't read them
};

static_assert(sizeof(s_NodeUSB) == 64);
static_assert(offsetof(s_NodeUSB, portId) == 12);
static_assert(offsetof(s_NodeUSB, nodeType) == 16);
static_assert(offsetof(s_NodeUSB, linkActive) == 20);
static_assert(offsetof(s_NodeUSB, linkBlocked) == 24);

}
