# Names every source that has a header of its own but includes another file before it. Being first
# shows that the header needs nothing included before it.
#
#   awk -f own_header_first.awk FILE...    sources and headers; status 1 when there is one to name

BEGIN {
  for (i = 1; i < ARGC; ++i) given[ARGV[i]] = 1
}

FNR == 1 {
  own = FILENAME
  waiting = sub(/\.cpp$/, ".hpp", own) && own in given
}

waiting && /^[ \t]*#[ \t]*include/ {
  if (index($0, "\"" own "\"") == 0) {
    printf "%s:%d: includes something before %s\n", FILENAME, FNR, own
    failed = 1
  }
  waiting = 0
}

END { exit failed }
