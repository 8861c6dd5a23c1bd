// SPDX-License-Identifier: MIT
// What the driver's journal proves about a session.
#include "console/journal_outcome.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velquinctl {
namespace {

std::string Line(const std::string& command, const std::string& reason = "TimeOut") {
  return "00:00:01 " + command + " : " + reason + "\r\n";
}

TEST(JournalOutcome, AnEmptyJournalAcknowledgesEverything) {
  const SessionOutcome outcome = OutcomeFromJournal("");
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kStop));
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kGoto));
  EXPECT_TRUE(outcome.ReadingsComplete());
}

TEST(JournalOutcome, AFailedCommandIsNotAcknowledgedAndOthersAre) {
  const struct {
    const char* command;
    MountCommand missed;
    MountCommand other;
  } cases[] = {
      {"$MTTGT=3,5.575533,22.014500,", MountCommand::kGoto, MountCommand::kUnpark},
      {"$MTTGT=3,5.575533,22.014500,Star", MountCommand::kUnpark, MountCommand::kGoto},
      {"$MTTGT=3,5.575533,22.014500,Star", MountCommand::kSite, MountCommand::kGoto},
      {"$MTTGT=1,270.000000,0.000000,Home", MountCommand::kHome, MountCommand::kPark},
      {"$MTTGT=2,270.000000,30.000000,Park", MountCommand::kPark, MountCommand::kHome},
      {"$MTSTP=1", MountCommand::kStop, MountCommand::kHandMove},
      {"$ALIGN=3,5.575533,22.014500,", MountCommand::kSync, MountCommand::kAlignReset},
      {"$ALINI=0", MountCommand::kAlignReset, MountCommand::kSync},
      {"$MTAGS=0.500000,0.500000", MountCommand::kGuideSpeed, MountCommand::kPulse},
      {"$SYLOC= 139.767, 35.681,9", MountCommand::kSite, MountCommand::kMeridian},
      {"$SYLTM=2026,01,15,21,05,00.0", MountCommand::kSite, MountCommand::kMeridian},
      {"$MTINI=1", MountCommand::kSite, MountCommand::kMeridian},
      {"$MTCOM=0.000000,3.000000", MountCommand::kMeridian, MountCommand::kSite},
      {"$MTMV2=1.000000,0.000000,25.500000", MountCommand::kHandMove, MountCommand::kSite},
      {"$MTMV2=0.250000,-0.500000,0.000000", MountCommand::kPulse, MountCommand::kSite},
      // The second half of a stop.
      {"$MTMV2=1.000000,0.000000,0.000000", MountCommand::kStop, MountCommand::kSite},
  };
  for (const auto& c : cases) {
    for (const char* reason : {"TimeOut", "Return Value Mismatch", "Can't Receve", "FD_ISSET"}) {
      const SessionOutcome outcome = OutcomeFromJournal(Line(c.command, reason));
      EXPECT_FALSE(outcome.Acknowledged(c.missed)) << c.command << ' ' << reason;
      const bool move = c.other == MountCommand::kHandMove || c.other == MountCommand::kPulse;
      if (move && std::string(reason) == "Return Value Mismatch") continue;  // see below
      EXPECT_TRUE(outcome.Acknowledged(c.other)) << c.command << ' ' << reason;
    }
  }
}

TEST(JournalOutcome, AMissedStatusMakesReadingsIncompleteAndNothingElse) {
  const SessionOutcome outcome = OutcomeFromJournal(Line("$MTSTA?"));
  EXPECT_FALSE(outcome.ReadingsComplete());
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kStop));
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kPulse));
}

TEST(JournalOutcome, ASlowAnswerIsAnAcknowledgementButItsReadingsAreNotCountedOn) {
  const SessionOutcome outcome = OutcomeFromJournal(Line("$MTSTP=1", "TimeOut(1000)"));
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kStop));
  EXPECT_FALSE(outcome.ReadingsComplete());
}

TEST(JournalOutcome, AMismatchAndASlowAnswerOfOneExchangeCountAsMissed) {
  const SessionOutcome outcome = OutcomeFromJournal(Line("$MTSTP=1", "Return Value Mismatch") +
                                                    Line("$MTSTP=1", "TimeOut(1000)"));
  EXPECT_FALSE(outcome.Acknowledged(MountCommand::kStop));
}

// Moves share a key: with answers shifted by one, a move may have got the answer of another move.
TEST(JournalOutcome, ShiftedAnswersProveNoMove) {
  const SessionOutcome outcome = OutcomeFromJournal(Line("$MTSTA?", "Return Value Mismatch"));
  EXPECT_FALSE(outcome.Acknowledged(MountCommand::kPulse));
  EXPECT_FALSE(outcome.Acknowledged(MountCommand::kHandMove));
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kStop)) << "nothing else has its key";
  EXPECT_FALSE(outcome.ReadingsComplete());
}

TEST(JournalOutcome, AfterAClosedLinkNothingIsKnown) {
  const SessionOutcome outcome = OutcomeFromJournal(Line("$MTSTA?", "Socket Close"));
  EXPECT_FALSE(outcome.Acknowledged(MountCommand::kStop));
  EXPECT_FALSE(outcome.ReadingsComplete());
}

TEST(JournalOutcome, WhatIsNoWholeJournalProvesNothing) {
  for (const std::string text : {"00:00:01 $MTSTA? : Time", "nonsense\r\n", "00:00:01 $MTSTA?\r\n",
                                 "\r\n", "00:00:01  : TimeOut\r\n"}) {
    EXPECT_FALSE(OutcomeFromJournal(text).Acknowledged(MountCommand::kStop)) << text;
    EXPECT_FALSE(OutcomeFromJournal(text).ReadingsComplete()) << text;
  }
}

TEST(JournalOutcome, MissesOfTheConnectingConcernNoCommand) {
  const SessionOutcome outcome = OutcomeFromJournal(Line("$SYLOC?") + Line("$SYVER?"));
  EXPECT_TRUE(outcome.Acknowledged(MountCommand::kSite));
  EXPECT_TRUE(outcome.ReadingsComplete());
}

TEST(JournalOutcome, KnowsWhetherAProbeWasSent) {
  const std::string before = Line("$MTSTA?");
  EXPECT_TRUE(ProbeWasSent(before, before + Line("$SYVER?")));
  EXPECT_TRUE(ProbeWasSent("", Line("$MTMDL?")));
  EXPECT_FALSE(ProbeWasSent(before, before + Line("$MTSTA?")));
  EXPECT_FALSE(ProbeWasSent("", ""));
}

// A slow connecting leaves the same line as a probe, long before the network is lost.
TEST(JournalOutcome, TheConnectingIsNoProbe) {
  const std::string connecting = Line("$SYVER?", "TimeOut(620)");
  EXPECT_FALSE(ProbeWasSent(connecting, connecting));
  EXPECT_FALSE(ProbeWasSent(connecting, "")) << "the second journal could not be written";
}

TEST(SessionOutcome, WithoutEvidenceNothingIsKnown) {
  EXPECT_FALSE(SessionOutcome::WithoutEvidence().Acknowledged(MountCommand::kStop));
  EXPECT_FALSE(SessionOutcome::WithoutEvidence().ReadingsComplete());
  EXPECT_FALSE(SessionOutcome::WithoutEvidence().Evident());
  EXPECT_TRUE(SessionOutcome::Unknown().Evident());
}

TEST(SessionOutcome, OfNoSessionNothingIsKnown) {
  EXPECT_FALSE(SessionOutcome::Unknown().Acknowledged(MountCommand::kStop));
  EXPECT_FALSE(SessionOutcome::Unknown().ReadingsComplete());
}

}  // namespace
}  // namespace velquinctl
