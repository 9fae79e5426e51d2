# Names every function that is longer than it should be: 60 lines, and 40 where pictures are drawn.
# Relies on the layout that clang-format gives: a function's first and last line are not indented.
#
#   awk -f function_lengths.awk FILE...    ends with status 1 when a function is too long

FNR == 1 {
  start = 0
  limit = FILENAME ~ /(^|\/)dashboard\/[^\/]*\.cpp$/ && FILENAME !~ /^tests/ ? 40 : 60
}

!start && /^[A-Za-z_~].*[({,]$/ && !/^(namespace|struct|class|enum|union|extern)/ {
  start = FNR
  name = $0
  opened = 0
}

start && /{$/ { opened = 1 }
start && !opened && /;$/ { start = 0 }

start && /^}/ {
  lines = FNR - start + 1
  if (lines > limit) {
    printf "%s:%d: %d lines, %d allowed: %s\n", FILENAME, start, lines, limit, name
    failed = 1
  }
  start = 0
}

END { exit failed }
