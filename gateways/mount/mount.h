// SPDX-License-Identifier: MIT
// Mount: one telescope mount as a service. It connects, polls the mount, carries out requests,
// reports the outcome of each, and repairs the connection by itself. It shows no window and has no
// process-wide state: any number of mounts can exist side by side.
//
// Every function may be called from any thread and returns at once; none waits for the network. The
// mount's worker thread makes all exchanges, one after the other. The destructor ends every ticket
// (kNotConnected) and waits for the running exchange, at most 0.5 s.
//
// The life of a request: the function checks the values and returns a ticket. The worker wakes and
// sends the command, a second time if a repetition is harmless. It then reads a status that is
// newer than the command, publishes a snapshot, ends the ticket and calls the listeners, in this
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

/// An event for a listener.
struct Event {
  enum class Kind {
    kConnected,
    kConnectFailed,  ///< the reason is snapshot.failure
    kDisconnected,   ///< as requested
    kLinkLost,
    kLinkBack,     ///< see samePlace and movedDegrees
    kSnapshot,     ///< a snapshot was published; several waiting ones become one, the latest
    kTicketKnown,  ///< the outcome of a request is known
  };
  Kind kind = Kind::kSnapshot;
  Snapshot snapshot;  ///< at the moment of the event
  /// Link back: the mount points where it would point if it had not been moved meanwhile.
  bool samePlace = false;
  double movedDegrees = 0.0;  ///< link back: the distance from there
  uint64_t ticketId = 0;      ///< ticket known
  Outcome outcome = Outcome::kDone;
};

/// Receives events in order, on a thread that serves only this listener. It may throw (no effect),
/// block (only its own further events wait), and destroy the mount.
using Listener = std::function<void(const Event& event)>;

struct MountOptions {
  uint16_t port = 60023;                      ///< UDP port of the controller
  std::chrono::milliseconds activePoll{100};  ///< between polls while the mount moves or is watched
  std::chrono::milliseconds idlePoll{500};    ///< between polls otherwise
  /// Sent after every connection, also when the link is back.
  std::optional<GuideRates> guideRates;
  std::optional<MeridianSettings> meridian;
  /// The largest distance from its goal at which a stopped mount counts as arrived.
  double arrivalToleranceDegrees = 0.02;
  /// Resolves a host name to an IPv4 address; 127.0.0.1 is 0x7F000001. Empty: the system's
  /// resolver. Called on a separate thread, which may outlive the mount.
  std::function<std::optional<uint32_t>(const std::string& name)> resolver;
};

/// Lengths of a guide pulse on both axes, which begin together. Positive increases the right
/// ascension or the declination; 0 does not move the axis. At most an hour each.
struct Pulse {
  std::chrono::microseconds ra{0};
  std::chrono::microseconds dec{0};
};

/// The directions of guide pulses, as in the driver's exports.
enum class PulseDirection { kNorth, kSouth, kEast, kWest };
/// @return the pulse that the driver sends for a direction: north raises the declination, and east
///         has the negative sign on the wire (the opposite of hand moves). A client that means
///         "increasing right ascension" sets Pulse::ra itself.
Pulse PulseTowards(PulseDirection direction, std::chrono::microseconds length);

/// The effect on a pulse or move that already runs on an axis.
enum class WhenBusy {
  kReplace,  ///< it ends now; a pulse's ticket ends with kOvertaken
  kRefuse,   ///< the whole new pulse is refused: kAxisBusy
};

/// Rates of hand moves: multiples of the sidereal rate (15.041 arcseconds a second), above 1 up to
/// this; the sign is the direction. The controller interprets a rate up to 1 as a share of the
/// guide speed, so such rates are reserved for pulses. The hand controller's maximum is 200; how a
/// controller handles more is unknown.
inline constexpr double kMaxMoveRate = 200.0;
/// A hand move continues for this long after its last renewal.
inline constexpr std::chrono::milliseconds kMoveHold{1000};

class Mount {
 public:
  explicit Mount(MountOptions options = {});
  ~Mount();
  Mount(const Mount&) = delete;
  Mount& operator=(const Mount&) = delete;

  // --- Connection --------------------------------------------------------------------------------

  /// Starts to connect. An event and the snapshot report the result. A failed attempt is not
  /// repeated; a connection that is lost later is restored. An existing connection ends first.
  /// @param address IPv4 address or host name
  void Connect(const std::string& address);
  /// Ends the connection or the attempt to connect. Waiting requests end with kNotConnected. The
  /// mount receives no command; a hand move ends by itself.
  void Disconnect();
  /// @return the version text of the controller; empty before the first connection.
  std::string ControllerVersion() const;

  // --- State -------------------------------------------------------------------------------------

  /// @return the latest snapshot; never waits for a lock.
  Snapshot State() const;
  /// Adds a listener. @return a number for RemoveListener.
  uint64_t AddListener(Listener listener);
  /// After it returns, no call to the listener begins. It waits up to half a second for a running
  /// call, unless the listener calls it.
  void RemoveListener(uint64_t number);
  /// Sets whether the mount is watched closely, and so polled faster.
  void SetWatched(bool watched);
  /// @param active, idle clamped to 10 ms to an hour
  void SetPollPeriods(std::chrono::milliseconds active, std::chrono::milliseconds idle);
  /// Writes the last 100 000 failed exchanges to the time-out journal, as the driver does.
  /// @param folder put before the file name unchanged @param prefix first part of the name
  void WriteJournal(const std::string& folder, const std::string& prefix) const;

  // --- Requests ----------------------------------------------------------------------------------
  // "Retried" means: sent once more after an exchange without a usable answer. Others are sent
  // once.

  /// Goes to a position. Done when the mount is at rest or tracks there. Overtakes an earlier goto,
  /// home, park or unpark. Retried: the target is absolute.
  Ticket Goto(const SkyPoint& target);
  /// Goes to the home position; done when it is at rest there. Retried.
  Ticket Home();
  /// Goes to the park position; done when the mount is parked, at once if it is parked already.
  /// Retried.
  Ticket Park();
  /// Goes to the position where the mount points, which ends parking and resumes tracking; done
  /// when it tracks there. Retried.
  Ticket Unpark();
  /// Stops every motion, before all waiting requests. Requests to move that wait or are in progress
  /// end with kCancelledByStop. Repeated until the controller has acknowledged it or the link is
  /// lost. Done when acknowledged; a slewing mount may then still brake.
  Ticket Stop();
  /// Tells the mount that it points at a position. Retried only while the mount tracks: a mount at
  /// rest would point elsewhere by then.
  Ticket Sync(const SkyPoint& position);
  /// Moves an axis at a rate (see kMaxMoveRate) until kMoveHold after the last call with the same
  /// axis and rate; 0 ends the move. Done when the controller has acknowledged the first command or
  /// the end; a call that only renews is done at once. The other axis is not affected.
  Ticket MoveAxis(Axis axis, double rate);
  /// Guides. Done when the time of both axes is over and a later status is published, or was not
  /// received within 0.2 s. Never sent twice: an unanswered pulse ends with kNoAnswer, and its
  /// remainder is not sent.
  Ticket Guide(const Pulse& pulse, WhenBusy whenBusy = WhenBusy::kReplace);
  /// Retried.
  Ticket SetGuideRates(const GuideRates& rates);
  /// Waits until the mount is at rest, sends the site and reads it back. Retried. The mount does
  /// not move.
  Ticket SetSite(const Site& site);
  /// Sets the controller's clock at the next full minute at which the mount does not move, since
  /// the controller accepts whole minutes. If the clock was off by a minute or more, the controller
  /// is initialised again, which may drop its alignment. An unanswered attempt is repeated at the
  /// next minute, three attempts in all.
  /// @param ahead how far the correct time is ahead of this machine's clock
  Ticket SetClock(std::chrono::nanoseconds ahead = {});
  /// Drops the controller's alignment. Retried.
  Ticket ResetAlignment();
  /// Retried.
  Ticket SetMeridian(const MeridianSettings& settings);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace velquin
