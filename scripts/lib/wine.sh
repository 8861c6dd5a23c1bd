# SPDX-License-Identifier: MIT
# Where Wine lives for this checkout, and with which settings. Sourced after common.sh.
#
# There are two prefixes, and for each lane (scripts/wine-lane) and each other locale two more. Wine
# ties a prefix's desktop to the display of the first program that opens a window, and every later
# program gets that desktop as long as it lasts; a program without a display next to one with a display
# would then fail to open windows. So the two never meet.
#
# VELQUIN_WINE_LOCALE chooses the system that programs see: ja_JP.UTF-8 (the default) is a Japanese one
# with code page 932, C an English one with 1252. A prefix keeps what it was made with, so each locale
# has its own, made when it is first used.
wine_home=$root/build/wine
wine_locale=${VELQUIN_WINE_LOCALE:-ja_JP.UTF-8}
case $wine_locale in
  ja_JP.UTF-8) wine_prefix_locale= ;;
  C) wine_prefix_locale=-C ;; # the names of lanes have small letters only
  *) die "VELQUIN_WINE_LOCALE is ja_JP.UTF-8 or C, not $wine_locale" ;;
esac
if [[ -n ${DISPLAY:-} ]]; then
  WINEPREFIX=$wine_home/prefix
else
  WINEPREFIX=$wine_home/prefix-headless
fi
WINEPREFIX+=$wine_prefix_locale
WINEPREFIX+=${VELQUIN_WINE_LANE:+-$VELQUIN_WINE_LANE} # set by scripts/wine-lane
wine_loader=/usr/lib/wine/wine64
wine_server=/usr/lib/wine/wineserver64
# Raise it when wine-prefix changes what it puts into a prefix.
wine_prefix_version=2
wine_prefix_stamp=$WINEPREFIX/velquin-prefix-$wine_prefix_version

# Put before a command that starts Wine: "${wine_env[@]}" COMMAND. The shell itself must not have
# these: Japanese file names need a Japanese locale, which only Wine can find.
# A home of its own, because a prefix links its document folders to the home folder.
# Without winedbg.exe=d a crashed program now and then ends with exit code 0.
wine_env=(
  env HOME="$WINEPREFIX.home" WINEPREFIX="$WINEPREFIX" WINEARCH=win64 WINEDEBUG=-all
  WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d"
  LOCPATH="$wine_home/locale" LC_ALL="$wine_locale"
)

# wine_ready: makes the prefix when it is not there.
wine_ready() {
  [[ -e $wine_prefix_stamp && -d $wine_home/locale/ja_JP.UTF-8 ]] || "$root/scripts/wine-prefix"
}
