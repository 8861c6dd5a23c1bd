// SPDX-License-Identifier: MIT
// Mount: one telescope mount as a service. It connects, asks the mount how it is, carries requests
// out, tells what became of each of them, and heals the connection by itself. It shows no window
// and keeps nothing for the process: any number of mounts live side by side.
//
// Every function may be called from any thread and returns at once; none waits for the network.
// A worker thread of the mount's own makes all exchanges, one after the other. The destructor ends
// every ticket (kNotConnected) and waits for the running exchange, 0.5 s at the most.
//
// The life of a request: the function checks the values and returns a ticket. The worker wakes,
// sends the command, and tries it a second time where that cannot do harm. It reads a status that
// is newer than the command, publishes a snapshot, ends the ticket and tells the listeners, in this
// order.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "gateways/mount/snapshot.h"
#include "gateways/mount/ticket.h"

namespace velquin {

/// What a listener is told.
struct Event {
  enum class Kind {
    kConnected,
    kConnectFailed,  ///< the reason is snapshot.failure
    kDisconnected,   ///< as asked
    kLinkLost,
    kLinkBack,  ///< see samePlace and movedDegrees
    kSnapshot,  ///< a snapshot was published; several that wait to be told become one, the latest
    kTicketKnown,  ///< the outcome of a request is known
  };
  Kind kind = Kind::kSnapshot;
  Snapshot snapshot;  ///< as it was when the event happened
  /// Link back: the mount points where it would be had nobody touched it.
  bool samePlace = false;
  double movedDegrees = 0.0;  ///< link back: how far from there it points
  uint64_t ticketId = 0;      ///< ticket known
  Outcome outcome = Outcome::kDone;
};

/// Told of events in their order, on a thread that is the listener's alone. It may throw (nothing
/// happens), block (its own further events wait, nothing else does), and destroy the mount.
using Listener = std::function<void(const Event& event)>;

struct MountOptions {
  uint16_t port = 60023;                      ///< where controllers listen
  std::chrono::milliseconds activePoll{100};  ///< between polls while the mount moves or is watched
  std::chrono::milliseconds idlePoll{500};    ///< between polls otherwise
  /// Sent after every connection, also when the link is back.
  std::optional<GuideRates> guideRates;
  std::optional<MeridianSettings> meridian;
  /// How far from its goal a mount that has stopped still counts as arrived.
  double arrivalToleranceDegrees = 0.02;
  /// Resolves a host name to an IPv4 address, 127.0.0.1 being 0x7F000001. Empty: the system's way.
  /// Called on a thread of its own, which may outlive the mount.
  std::function<std::optional<uint32_t>(const std::string& name)> resolver;
};

/// Lengths of a guide pulse on both axes, which begin together. Positive is increasing right
/// ascension, and increasing declination; 0 leaves an axis alone. Up to an hour each.
struct Pulse {
  std::chrono::microseconds ra{0};
  std::chrono::microseconds dec{0};
};

/// The directions of guide pulses as the driver's exports count them.
enum class PulseDirection { kNorth, kSouth, kEast, kWest };
/// @return the pulse that the driver sends for a direction: north raises the declination, and east
///         has the negative sign on the wire (hand moves have the opposite one). A client that
///         means "increasing right ascension" sets Pulse::ra itself.
Pulse PulseTowards(PulseDirection direction, std::chrono::microseconds length);

/// What happens to a pulse or move that already runs on an axis.
enum class WhenBusy {
  kReplace,  ///< it ends here; a pulse's ticket says kOvertaken
  kRefuse,   ///< the new pulse is refused as a whole: kAxisBusy
};

/// Rates of hand moves: multiples of the sidereal rate (15.041 arcseconds a second), above 1 up to
/// this; the sign is the direction. Up to 1 the controller takes a rate for a share of the guide
/// speed, so those are left to pulses; above 200, the fastest of the hand controller, nothing is
/// known of what a controller does.
inline constexpr double kMaxMoveRate = 200.0;
/// For so long a hand move goes on after it was last renewed.
inline constexpr std::chrono::milliseconds kMoveHold{1000};

class Mount {
 public:
  explicit Mount(MountOptions options = {});
  ~Mount();
  Mount(const Mount&) = delete;
  Mount& operator=(const Mount&) = delete;

  // --- Connection --------------------------------------------------------------------------------

  /// Begins to connect. How it ends is told by an event and stands in the snapshot; a failed
  /// attempt is not repeated, a connection that was lost later is. Connected already: ends that
  /// connection first. @param address IPv4 address or host name
  void Connect(const std::string& address);
  /// Ends the connection or the attempt to connect. Requests that wait end with kNotConnected. The
  /// mount itself is left as it is; a hand move ends by itself.
  void Disconnect();
  /// @return the version text of the controller; empty before the first connection.
  std::string ControllerVersion() const;

  // --- State -------------------------------------------------------------------------------------

  /// @return the latest snapshot; never waits for a lock.
  Snapshot State() const;
  /// Adds a listener. @return a number for RemoveListener.
  uint64_t AddListener(Listener listener);
  /// No call begins after it has returned. It waits for a running one for up to half a second,
  /// unless it is called from there.
  void RemoveListener(uint64_t number);
  /// Says whether somebody looks at the mount closely, so that it is polled faster.
  void SetWatched(bool watched);
  /// @param active, idle 10 ms to an hour; others are brought into this range
  void SetPollPeriods(std::chrono::milliseconds active, std::chrono::milliseconds idle);
  /// Writes the last 100 000 failed exchanges to the time-out journal, as the driver does.
  /// @param folder put before the file's name as it is @param prefix first part of the name
  void WriteJournal(const std::string& folder, const std::string& prefix) const;

  // --- Requests ----------------------------------------------------------------------------------
  // "Tried once more" means after an exchange without a usable answer; others are sent once.

  /// Goes to a position. Done when the mount is at rest or tracks there. Overtakes an earlier goto,
  /// home, park or unpark. Tried once more: the target is absolute.
  Ticket Goto(const SkyPoint& target);
  /// Goes to the home position; done when it rests there. Tried once more.
  Ticket Home();
  /// Goes to the park position; done when the mount is parked. Tried once more. When it is parked
  /// already, done at once.
  Ticket Park();
  /// Goes to where the mount points, which ends parking and resumes tracking; done when it tracks
  /// there. Tried once more.
  Ticket Unpark();
  /// Stops every motion, before all that waits. Requests to move that wait or are under way end
  /// with kCancelledByStop. Repeated until the controller has acknowledged it or the link is lost;
  /// done when acknowledged, at which time a slewing mount still brakes.
  Ticket Stop();
  /// Tells the mount that it points at a position. Tried once more only while the mount tracks: at
  /// rest it would point elsewhere by then.
  Ticket Sync(const SkyPoint& position);
  /// Moves an axis at a rate (see kMaxMoveRate) until kMoveHold after the last call with the same
  /// axis and rate; 0 ends it. Done when the controller has acknowledged the first command or the
  /// end; a call that only renews is done at once. The other axis is left alone.
  Ticket MoveAxis(Axis axis, double rate);
  /// Guides. Done when the time of both axes is over and a status from after that is published, or
  /// could not be had within 0.2 s. Never sent twice: an unanswered pulse ends with kNoAnswer and
  /// the rest of it is not sent.
  Ticket Guide(const Pulse& pulse, WhenBusy whenBusy = WhenBusy::kReplace);
  /// Tried once more.
  Ticket SetGuideRates(const GuideRates& rates);
  /// Waits for a moving mount to come to rest, hands the site over and reads it back. Tried once
  /// more. The mount is not sent anywhere.
  Ticket SetSite(const Site& site);
  /// Sets the controller's clock at the next full minute at which the mount does not move, since
  /// the controller is told whole minutes. If it was off by a minute or more the controller is
  /// initialised again, which may forget its alignment. An unanswered attempt is made again at the
  /// next minute, three in all.
  /// @param ahead how far the right time is ahead of this machine's clock
  Ticket SetClock(std::chrono::nanoseconds ahead = {});
  /// Lets the controller forget its alignment. Tried once more.
  Ticket ResetAlignment();
  /// Tried once more.
  Ticket SetMeridian(const MeridianSettings& settings);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace velquin
