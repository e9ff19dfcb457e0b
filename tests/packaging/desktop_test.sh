#!/usr/bin/env bash
# What the desktop reads of us: entry, metainfo, icons, manual pages and completions, as they are
# installed below $tree.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"

share=${tree:?}/share
scenes="kavo pop pu storm qbomb title opts enter"

EntryIsValid() {
  desktop-file-validate --no-warn-deprecated "$share/applications/kavo.desktop"
}

MetainfoIsValid() {
  appstreamcli validate --no-net --pedantic "$share"/metainfo/*.metainfo.xml
}

# What a software catalogue shows of it, in each of its languages.
MetainfoTellsOfMakersVersionColoursAndPictures() {
  python3 - "$share"/metainfo/*.metainfo.xml "${repository:?}/docs/pictures" <<'PYTHON'
import pathlib
import sys
import xml.etree.ElementTree as tree

component = tree.parse(sys.argv[1]).getroot()
pictures = pathlib.Path(sys.argv[2])
language = "{http://www.w3.org/XML/1998/namespace}lang"


def languages(elements):
    return sorted(element.get(language, "") for element in elements)


assert component.find("developer").get("id"), "no developer's id"
for release in component.findall("releases/release"):
    notes = release.find("description")
    assert notes is not None and {"", "de"} <= set(languages(notes)), release.get("version")
schemes = {colour.get("scheme_preference") for colour in component.findall("branding/color")}
assert schemes == {"light", "dark"}, schemes
screenshots = component.findall("screenshots/screenshot")
assert len(screenshots) >= 2
for screenshot in screenshots:
    captions = languages(screenshot.findall("caption"))
    assert captions == ["", "de"], captions
    images = screenshot.findall("image")
    assert languages(images) in ([""], ["", "de"]), captions
    for image in images:
        picture = pictures / image.text.rsplit("/", 1)[1]
        assert picture.is_file(), picture
assert any(len(screenshot.findall("image")) == 2 for screenshot in screenshots), "none has German words"
PYTHON
}

FlatpakManifestFitsWhatIsInstalled() {
  python3 - "$repository/packaging/flatpak/example.kavo.kavo.json" "$share" <<'PYTHON'
import json
import pathlib
import sys
import xml.etree.ElementTree as tree

path, share = map(pathlib.Path, sys.argv[1:])
manifest = json.loads(path.read_text())
component = tree.parse(next((share / "metainfo").glob("*.xml"))).getroot()
assert manifest["id"] == component.find("id").text == path.stem
assert (share.parent / "bin" / manifest["command"]).is_file()
assert (share / "applications" / manifest["rename-desktop-file"]).is_file()
assert (share / "icons/hicolor/scalable/apps" / (manifest["rename-icon"] + ".svg")).is_file()
assert not [right for right in manifest["finish-args"] if "network" in right or "filesystem" in right]
folder = next(source for source in manifest["modules"][-1]["sources"] if source["type"] == "dir")
assert (path.parent / folder["path"] / "CMakeLists.txt").is_file(), folder
PYTHON
}

EntryNamesTheInstalledProgramAndIcon() {
  local entry=$share/applications/kavo.desktop program
  program=$(basename "$(find "$tree/bin" "$tree/games" -type f 2>/dev/null)")
  expect_equal "Exec, and that of the calm display" "$program
$program --calm" "$(sed -n 's/^Exec=//p' "$entry")"
  [ -f "$share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' "$entry").svg" ] || fail "no such icon"
}

MetainfoLeadsToTheEntry() {
  local id
  id=$(sed -n 's|.*<launchable type="desktop-id">\(.*\)</launchable>.*|\1|p' "$share"/metainfo/*.xml)
  [ -f "$share/applications/$id" ] || fail "there is no entry $id"
}

# man has warnings of its own formatter: a page that renders without one has sound markup.
expect_sound_page() {
  local warnings
  warnings=$(MANROFFSEQ='' MANWIDTH=80 man --warnings=w -E UTF-8 -l -Tutf8 -Z "$1" 2>&1 >/dev/null)
  expect_equal "warnings of $1" "" "$warnings"
}

ManualPagesAreSound() {
  expect_sound_page "$share/man/man6/kavo.6.gz"
  expect_sound_page "$share/man/de/man6/kavo.6.gz"
}

ManualPagesAndCompletionsKnowEveryScene() {
  local scene file
  for file in "$share/man/man6/kavo.6.gz" "$share/man/de/man6/kavo.6.gz" \
    "$share/bash-completion/completions/kavo" "$share/zsh/site-functions/_kavo" \
    "$share/fish/vendor_completions.d/kavo.fish"; do
    for scene in $scenes; do
      zcat -f "$file" | grep -w -- "$scene" >/dev/null || fail "$file does not know $scene"
    done
  done
}

TheGameKnowsEachSceneByItsWord() {
  local scene
  for scene in $scenes; do
    [ "$(HOME=$work "$tree/bin/kavo" shot "$scene")" != "shot saved" ] || fail "it does not know $scene"
  done
  expect_equal "kavo shot anything" "shot saved" "$(HOME=$work "$tree/bin/kavo" shot anything)"
}

ManualPagesAndCompletionsKnowEveryOption() {
  local option file
  for option in calm music effects fullscreen scale lang help version; do
    for file in "$share/man/man6/kavo.6.gz" "$share/man/de/man6/kavo.6.gz" \
      "$share/bash-completion/completions/kavo" "$share/zsh/site-functions/_kavo" \
      "$share/fish/vendor_completions.d/kavo.fish"; do
      zcat -f "$file" | tr -d '\134' | grep -E -- "(--|-l )$option\b" >/dev/null || fail "$file does not know --$option"
    done
    "$tree/bin/kavo" --help | grep -- "--$option" >/dev/null || fail "--help does not tell of --$option"
  done
}

# It looks for a display when it has said what becomes of its scores.
TheGameSaysWhyScoresAreNotKeptAndLeavesNothing() {
  local errors
  touch home
  mkdir temporary
  errors=$(env -u DISPLAY -u WAYLAND_DISPLAY -u XDG_DATA_HOME HOME="$work/home" TMPDIR="$work/temporary" \
    "$tree/bin/kavo" 2>&1) && fail "it played without a display"
  expect_contains "what it says first" "scores are not kept: mkdir: " "$(sed -n 1p <<<"$errors")"
  expect_contains "what it says first" "Not a directory" "$(sed -n 1p <<<"$errors")"
  expect_equal "what lies in the temporary folder" "" "$(ls -A temporary)"
  expect_equal "what lies here" "home
temporary" "$(ls -A)"
}

EveryLicenceIsShipped() {
  expect_contains "copyright" "Permission is hereby granted, free of charge" "$(cat "$share/doc/kavo/copyright")"
  expect_contains "copyright" "SIL OPEN FONT LICENSE" "$(cat "$share/doc/kavo/copyright")"
}

run_case "$@"
