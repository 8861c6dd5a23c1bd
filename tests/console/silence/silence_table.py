#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs velquinctl's commands while the link goes silent: before, while or after the controller gets
the command. Exit code 0 must mean that the controller's answer was delivered and that the mount did
it; a mount that still moves at exit code 1 must be named so.

Between velquinctl and each simulated mount stands a relay of this program, on a loopback address of
its own, so several commands run at once.

With --unplug the address itself goes away, so that the system refuses to send: then a stop must not
be called acknowledged.

Usage: silence_table.py PROGRAMS SCRIPTS [--seeds FIRST-LAST] [--only COMMAND] [--unplug]
  PROGRAMS the folder of velquinctl.exe and velquin-sim.exe
  SCRIPTS  the folder of wine-run and wine-live
  --seeds  also silence that begins as many status queries after the answer, and a bad Wi-Fi (3 %
           lost either way, 50 to 520 ms late) with each seed
  --only   this command of the table alone
  --unplug the commands that set a mount in motion, with addresses that go away; root of a network of
           its own may run this (scripts/wine-lane gives one)
"""
import argparse
import concurrent.futures
import os
import random
import signal
import socket
import subprocess
import sys
import threading
import time

WORKERS = 8
FIRST_SIMULATOR_PORT = 61000
CONTROLLER_PORT = 60023
SLEWING, PARKED = 2, 3
MAY_MOVE = "the mount may still be moving"
STOPPED = "acknowledged the stop"
UNPLUGGED, INTERRUPTED = "address goes", "with Ctrl-C"  # what else may happen to a command


class Mount:
    """One simulated mount, asked directly."""

    def __init__(self, number, arguments):
        self.port = FIRST_SIMULATOR_PORT + number
        self.process = subprocess.Popen(
            [f"{arguments.scripts}/wine-live", f"{arguments.programs}/velquin-sim.exe", "--port",
             str(self.port), "--run-for", "900" if arguments.seeds else "230", "--time-scale", "2",
             "--top-rate", "30", "--acceleration", "45", "--clock", "2026-01-15T12:00:00"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def say(self, line, attempts=100):
        for _ in range(attempts):
            with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as link:
                link.settimeout(0.3)
                try:
                    link.sendto(line.encode() + b"\r\n", ("127.0.0.1", self.port))
                    return link.recv(4096).decode().strip()
                except OSError:
                    time.sleep(0.02)
        raise RuntimeError("the simulated mount is deaf")

    def status(self):
        fields = self.say("$MTSTA?").split("=")[1].split(",")
        return {"state": int(fields[1]), "ra": float(fields[8]), "dec": float(fields[9])}

    def rest(self):
        deadline = time.monotonic() + 30
        while self.status()["state"] == SLEWING:
            if time.monotonic() > deadline:
                raise RuntimeError("the simulated mount does not arrive")
            time.sleep(0.05)

    def prepare(self, last):
        """Brings it, tracking, to 6 h, 20 degrees; then says the commands that come before."""
        self.say("$MTSTP=1")
        self.rest()
        for line in ["$MTTGT=3,6.0,20.0,", "$ALINI=0", "$MTAGS=1,1", "$SYLOC=139.767,35.681,9",
                     "$MTTGT=3,6.0,20.0,"]:
            self.say(line)
            self.rest()
        for index, line in enumerate(last):
            if index:
                self.rest()
            self.say(line)

    def close(self):
        # Interrupted it closes its socket; otherwise Wine's server may keep it, and the port.
        self.process.send_signal(signal.SIGINT)
        self.process.wait(20)


class Relay(threading.Thread):
    """The network between velquinctl and a mount."""

    def __init__(self, address, mount, key, silence, wifi):
        super().__init__(daemon=True)
        self.mount, self.key, self.silence = mount, key, silence
        self.address = address
        if silence == UNPLUGGED:
            subprocess.run(["ip", "addr", "add", f"{address}/32", "dev", "lo"], check=True)
        self.random = random.Random(wifi) if wifi else None
        self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.bind((address, CONTROLLER_PORT))
        self.socket.settimeout(0.1)
        self.ending = self.silent = False
        self.queries_after = None  # status queries since the first answer to the command
        self.obeyed, self.answered = [], []

    def run(self):
        while not self.ending:
            try:
                data, peer = self.socket.recvfrom(4096)
            except socket.timeout:
                continue
            if not self.silent:
                self.exchange(data.decode().strip(), peer)

    def lost(self):
        return self.random is not None and self.random.random() < 0.03

    def exchange(self, line, peer):
        ours = line.startswith(self.key)
        if ours and self.silence == "before":
            self.silent = True
        if self.silent or self.lost():
            return
        if self.silence == UNPLUGGED and self.queries_after is not None and line == "$MTSTA?":
            self.silent = True
            subprocess.run(["ip", "addr", "del", f"{self.address}/32", "dev", "lo"], check=True)
            return
        if isinstance(self.silence, int) and self.queries_after is not None:
            self.queries_after += line == "$MTSTA?"
            if self.queries_after > self.silence:
                self.silent = True
                return
        reply = self.mount.say(line)
        if ours:
            self.obeyed.append(line)
            if self.silence in ("during", INTERRUPTED):
                self.silent = True
                return
            self.queries_after = self.queries_after or 0
        if self.lost():
            return
        if self.random:
            threading.Timer(self.random.uniform(0.05, 0.52), self.send, (line, reply, peer)).start()
        else:
            self.send(line, reply, peer)

    def send(self, line, reply, peer):
        try:
            self.socket.sendto(reply.encode() + b"\r\n", peer)
        except OSError:
            return  # late, and the case is over
        self.answered.append(line)

    def close(self):
        self.ending = True
        self.join()
        self.socket.close()


def near(ra, dec):
    def is_near(mount):
        now = mount.status()
        return abs(now["ra"] - ra) < 0.002 and abs(now["dec"] - dec) < 0.02
    return is_near


SITE = "--latitude 35.7 --longitude 139.8 --zone 9 --time 2026-01-15T21:00:00"
# words, key of the command, what the mount is told before, whether the mount did it
TABLE = {
    "stop": ("--timeout 5", "$MTSTP=", ["$MTTGT=1,270,0,", "$MTTGT=3,6.0,-20.0,"],
             lambda mount: mount.status()["state"] != SLEWING),
    "goto": ("5h 10 --timeout 5", "$MTTGT=3,", [], near(5.0, 10.0)),
    "home": ("--timeout 6", "$MTTGT=1,", [],
             lambda mount: mount.status()["state"] == 0 and mount.status()["dec"] > 89.99),
    "park": ("--timeout 6", "$MTTGT=2,", [], lambda mount: mount.status()["state"] == PARKED),
    "unpark": ("--timeout 3", "$MTTGT=3,", ["$MTTGT=2,270,30,", "$MTSTA?"],
               lambda mount: mount.status()["state"] != PARKED),
    "sync": ("6h 20.5 --timeout 3", "$ALIGN=", [], near(6.0, 20.5)),
    "pulse": ("--north 300 --timeout 3", "$MTMV2=", [],
              lambda mount: mount.status()["dec"] > 20.0005),
    "slew": ("north --for 0.4 --timeout 3", "$MTMV2=", [],
             lambda mount: mount.status()["dec"] > 20.05),
    "guide-speed": ("0.5 0.75 --timeout 3", "$MTAGS=", [],
                    lambda mount: mount.say("$MTAGS?") == "$MTAGS=0.500000,0.750000"),
    "site": (SITE + " --timeout 4", "$SYLOC=", [],
             lambda mount: mount.say("$SYLOC?") == "$SYLOC=139.800,35.700,9"),
    "align-reset": ("--timeout 3", "$ALINI=", [], lambda mount: True),
}


def judge(code, error, relay, did, moves, must_succeed):
    """What is wrong with a run; empty when nothing is."""
    wrong = []
    if STOPPED in error and "$MTSTP=1" not in relay.answered:
        wrong.append("a stop is claimed")
    if relay.silence in (UNPLUGGED, INTERRUPTED):
        if code != (130 if relay.silence == INTERRUPTED else 1):
            wrong.append("exit code")
        if MAY_MOVE not in error:
            wrong.append("the danger is not named")
        return wrong
    if code not in (0, 1):
        wrong.append("exit code")
    if code == 0 and not relay.obeyed:
        wrong.append("0 without the command")
    if code == 0 and relay.obeyed and relay.obeyed[-1] not in relay.answered:
        wrong.append("0 without the answer")
    if code == 0 and not did:
        wrong.append("0 and the mount did not do it")
    if code == 1 and len(error.strip().split("\n")) != 1:
        wrong.append("not one line")
    if code == 1 and moves and MAY_MOVE not in error:
        wrong.append("a moving mount is not named")
    if must_succeed and code != 0:
        wrong.append("no success on a good link")
    return wrong


def run_case(case, mount, address, arguments):
    command, silence, wifi = case
    words, key, last, has_done = TABLE[command]
    if silence == UNPLUGGED:
        words = words[:words.rindex(" ") + 1] + "2"
        address = address.replace("127.0.", "10.0.")
    if wifi or silence is None:
        words = words[:words.rindex(" ") + 1] + "30"
    mount.prepare(last)
    relay = Relay(address, mount, key, silence, wifi)
    relay.start()
    begin = time.monotonic()
    run = run_program([f"{arguments.programs}/velquinctl.exe", command, address, *words.split(),
                       "--progress", "none"], relay, arguments)
    seconds = time.monotonic() - begin
    moves = mount.status()["state"] == SLEWING
    relay.close()
    # wine-run prints both as one; a command that fails prints nothing but its error.
    wrong = judge(run.returncode, run.stdout + run.stderr, relay, has_done(mount), moves,
                  silence is None and not wifi)
    told = (run.stdout + run.stderr).strip().split("\n")[-1]
    what = f"seed {wifi}" if wifi else "good link" if silence is None else f"silence {silence}"
    return wrong, f"{command:11} {what:20} {run.returncode} {seconds:5.1f} s  {told}"


def run_program(words, relay, arguments):
    """Runs velquinctl to its end; presses Ctrl-C for it when the link has gone silent, if asked to."""
    through = "wine-live" if relay.silence == INTERRUPTED else "wine-run"
    with subprocess.Popen([f"{arguments.scripts}/{through}", *words], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, stdin=subprocess.DEVNULL,
                          env=dict(os.environ, WINE_RUN_TIMEOUT="120")) as process:
        deadline = time.monotonic() + 30
        while relay.silence == INTERRUPTED and not relay.silent and time.monotonic() < deadline:
            time.sleep(0.02)
        if relay.silence == INTERRUPTED:
            process.send_signal(signal.SIGINT)
        out, error = process.communicate(timeout=120)
    return subprocess.CompletedProcess(words, process.returncode, out.replace("\r", ""),
                                       error.replace("\r", ""))


def cases(arguments):
    if arguments.unplug:
        for command in ["goto", "home", "park"]:
            yield command, UNPLUGGED, None
        return
    first, last = arguments.seeds or (1, 0)
    for index, command in enumerate(TABLE):
        if arguments.only not in (None, command):
            continue
        # By itself one number of status queries for each command; the seeds are all of them.
        numbers = set(range(first - 1, last)) or {index % 4}
        for silence in [None, "before", "during", *numbers]:
            yield command, silence, None
        if command in ("goto", "home", "park"):
            yield command, INTERRUPTED, None
        for seed in range(first, last + 1):
            yield command, None, seed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs")
    parser.add_argument("scripts")
    parser.add_argument("--seeds", type=lambda text: tuple(map(int, text.split("-"))))
    parser.add_argument("--only")
    parser.add_argument("--unplug", action="store_true")
    arguments = parser.parse_args()
    waiting = list(cases(arguments))
    lock = threading.Lock()
    results = []

    def work(number):
        address = f"127.0.61.{number + 1}"
        mount = Mount(number, arguments)
        try:
            while True:
                with lock:
                    if not waiting:
                        return
                    case = waiting.pop(0)
                wrong, line = run_case(case, mount, address, arguments)
                with lock:
                    results.append(not wrong)
                    print(line + (f"  WRONG: {', '.join(wrong)}" if wrong else ""), flush=True)
        finally:
            mount.close()

    with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
        for worker in [pool.submit(work, number) for number in range(WORKERS)]:
            worker.result()
    print(f"{sum(results)} of {len(results)} as they should be")
    return 0 if results and all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
