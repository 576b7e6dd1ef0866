#pragma once

#include <array>
#include <chrono>

// How the logger and the GPS reader know each other. On the session bus the reader owns the name kService and
// offers one object: properties for its title and its six texts, the method Quit, the signal Heartbeat.
namespace kestrum::reader {

// The logger's name for server and topic of its links.
inline constexpr const char* kTopic = "Posdex|form1";
// Title of the reader's main window.
inline constexpr const char* kTitle = "Posdex Version 1.19";

// Name on the bus and interface of the object.
inline constexpr const char* kService = "org.kestrum.Posdex";
inline constexpr const char* kPath = "/form1";
inline constexpr const char* kTitleProperty = "Title";
// Asks the reader to close; no arguments, no result.
inline constexpr const char* kQuit = "Quit";
// Sent when no text was for kHeartbeatEvery, by the thread that reads the receiver: a reader that stands
// still falls silent.
inline constexpr const char* kHeartbeat = "Heartbeat";
inline constexpr std::chrono::milliseconds kHeartbeatEvery{2000};

// The six texts: latitude, longitude, validity ("A" for a fix), compass in degrees, height in feet, speed in
// knots. A missing number is "32768".
inline constexpr std::array kItems = {"lblLat1",    "lblLong1",   "lblVal1",
                                      "lblCompas1", "lblHeight1", "lblSpeed1"};

}  // namespace kestrum::reader
