#!/bin/sh
# Draws docs/architecture.svg: the rooms with their folders, each above those that its files include. The purposes come
# from the table of docs/architecture.md.
#   scripts/draw-architecture.sh             writes the drawing
#   scripts/draw-architecture.sh --check     fails if the drawing in the tree isn't the one of these folders
set -eu
cd "$(dirname "$0")/.."
drawing=docs/architecture.svg
rooms="host gateway mime desktop siblings runtime src platform"

# Lines "room NAME PURPOSE", "folder ROOM NAME" and "includes ROOM ROOM".
facts() {
  for room in $rooms; do
    sed -n "s,^| \`$room/\` | \(.*\) |\$,room $room \1,p" docs/architecture.md
    find "$room" -mindepth 1 -maxdepth 1 -type d | LC_ALL=C sort | sed "s,^$room/,folder $room ,"
  done
  find $rooms \( -name '*.h' -o -name '*.cpp' \) -exec grep -HoE '^#include "[a-z]+/' {} + |
    sed -E 's,^([a-z]+)/.*"([a-z]+)/,includes \1 \2,' | LC_ALL=C sort -u
}

draw() {
  facts | awk '
function escaped(text) { gsub(/&/, "\\&amp;", text); gsub(/</, "\\&lt;", text); return text }
function level(room, other, deepest) {
  if (room in depth) return depth[room]
  deepest = -1
  for (other in purpose) if (((room, other) in edge) && level(other) > deepest) deepest = level(other)
  return depth[room] = deepest + 1
}
# True if the room includes the other by way of a third: no arrow is needed then.
function indirect(room, other, third) {
  for (third in purpose) if (((room, third) in edge) && (((third, other) in edge) || indirect(third, other))) return 1
  return 0
}
function text(x, y, class, words) { printf "<text x=\"%d\" y=\"%d\" class=\"%s\">%s</text>\n", x, y, class, escaped(words) }
$1 == "room" { name = $2; sub(/^room [^ ]+ /, ""); purpose[name] = $0; rooms[++count] = name }
$1 == "folder" { folders[$2] = folders[$2] (folders[$2] ? ", " : "") $3 }
$1 == "includes" && $2 != $3 { edge[$2, $3] = 1 }
END {
  width = 244; height = 160; gap = 24; between = 60; columns = 1; rows = 0
  for (i = 1; i <= count; i++) { row = level(rooms[i]); at[rooms[i]] = members[row]++
    if (members[row] > columns) columns = members[row]
    if (row > rows) rows = row }
  total = columns * (width + gap) - gap
  printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" font-family=\"sans-serif\">\n", total + 40, (rows + 1) * (height + between) - between + 40
  print "<style>rect{fill:#eef3f8;stroke:#35506b}.name{font-size:17px;font-weight:bold}.purpose{font-size:12px}.folder{font-size:12px;fill:#35506b;font-family:monospace}line{stroke:#35506b;stroke-width:1.5}</style>"
  print "<defs><marker id=\"end\" viewBox=\"0 0 8 8\" refX=\"8\" refY=\"4\" markerWidth=\"8\" markerHeight=\"8\" orient=\"auto\"><path d=\"M0 0 8 4 0 8z\" fill=\"#35506b\"/></marker></defs>"
  print "<rect x=\"0\" y=\"0\" width=\"100%\" height=\"100%\" style=\"fill:#ffffff;stroke:none\"/>"
  for (i = 1; i <= count; i++) {
    name = rooms[i]; row = level(name)
    left[name] = 20 + (total - members[row] * (width + gap) + gap) / 2 + at[name] * (width + gap)
    top[name] = 20 + (rows - row) * (height + between)
  }
  for (i = 1; i <= count; i++) for (j = 1; j <= count; j++) {
    from = rooms[i]; to = rooms[j]
    if (((from, to) in edge) && !indirect(from, to))
      printf "<line x1=\"%d\" y1=\"%d\" x2=\"%d\" y2=\"%d\" marker-end=\"url(#end)\"/>\n", left[from] + width / 2, top[from] + height, left[to] + width / 2, top[to]
  }
  for (i = 1; i <= count; i++) {
    name = rooms[i]; x = left[name]; y = top[name]
    printf "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" rx=\"6\"/>\n", x, y, width, height
    text(x + 12, y + 26, "name", name "/")
    y += 46
    lines = fold(purpose[name], 34, "purpose", x, y); y += lines * 16 + 6
    fold(folders[name], 30, "folder", x, y)
  }
  print "</svg>"
}
function fold(words, most, class, x, y, parts, n, k, line, lines) {
  n = split(words, parts, " ")
  for (k = 1; k <= n; k++) {
    if (line != "" && length(line " " parts[k]) > most) { text(x + 12, y + 16 * lines++, class, line); line = parts[k] }
    else line = line (line == "" ? "" : " ") parts[k]
  }
  if (line != "") text(x + 12, y + 16 * lines++, class, line)
  return lines + 0
}'
}

if [ "${1:-}" = --check ]; then
  draw | cmp -s - "$drawing" || { echo "$drawing is out of date: run scripts/draw-architecture.sh" >&2; exit 1; }
else
  draw >"$drawing"
fi
