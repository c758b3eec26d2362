# Joins what bench_memory and bench_speed found to one table, and draws the chart if asked to.
#   memory: shape size contestant bytes peak kept allocations    speed: shape size contestant us

FNR == NR {
  key = $1 " " $2
  if (!(key in bytes)) {
    documents[++count] = key
  }
  bytes[key] = $4
  peak[key, $3] = $5
  kept[key, $3] = $6
  allocations[key, $3] = $7
  next
}
{ time[$1 " " $2, $3] = $4 }

# The growth of the time with the size: the slope of the line that fits best, both logarithmic.
function exponent(shape, contestant,    i, part, n, x, y, sx, sy, sxx, sxy) {
  for (i = 1; i <= count; ++i) {
    split(documents[i], part, " ")
    if (part[1] == shape) {
      x = log(part[2]); y = log(time[documents[i], contestant])
      ++n; sx += x; sy += y; sxx += x * x; sxy += x * y
    }
  }
  return (n * sxy - sx * sy) / (n * sxx - sx * sx)
}

function ratio(a, b) { return b > 0 && a > 0 ? sprintf("%.2f", a / b) : "" }

function microseconds(value) { return value >= 100 ? sprintf("%.0f", value) : sprintf("%.1f", value) }

END {
  print "| document | size | KB | bare, µs | by hand / bare | ours, µs | ours / bare | exponent | " \
        "peak, KB: bare | ours | kept, KB: bare | ours | allocations: bare | ours |"
  print "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|"
  for (i = 1; i <= count; ++i) {
    key = documents[i]
    split(key, part, " ")
    split(documents[i + 1], following, " ")
    last = (part[2] > 0 && part[1] != following[1])
    printf "| %s | %s | %.1f | %s | %s | %s | %s | %s | %.1f | %.1f | %.1f | %.1f | %d | %d |\n",
      part[1], (part[2] > 0 ? part[2] : ""), bytes[key] / 1000, microseconds(time[key, "bare"]),
      ratio(time[key, "hand"], time[key, "bare"]), microseconds(time[key, "ours"]),
      ratio(time[key, "ours"], time[key, "bare"]),
      last ? sprintf("%.2f", exponent(part[1], "ours")) : "",
      peak[key, "bare"] / 1000, peak[key, "ours"] / 1000,
      kept[key, "bare"] / 1000, kept[key, "ours"] / 1000,
      allocations[key, "bare"], allocations[key, "ours"]
  }
  if (chart != "") {
    draw()
  }
}

# Cost for each byte over the size: a flat line is linear growth, a lower one is cheaper.
function draw(    i, key, part, shape, contestant, names, colours, panel, panels, line, x, y, v) {
  split("bare hand ours", names, " ")
  colours["bare"] = "#555555"; colours["hand"] = "#c05020"; colours["ours"] = "#2060c0"
  printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 760 440\" " \
         "font-family=\"sans-serif\" font-size=\"11\">\n" \
         "<rect width=\"760\" height=\"440\" fill=\"white\"/>\n" >chart
  for (i = 1; i <= count; ++i) {
    split(documents[i], part, " ")
    if (part[2] > 0 && !(part[1] in panel)) {
      panel[part[1]] = panels++
      left[part[1]] = 50 + (panel[part[1]] % 4) * 180
      top[part[1]] = 40 + int(panel[part[1]] / 4) * 200
      printf "<text x=\"%d\" y=\"%d\" font-weight=\"bold\">%s</text>\n", left[part[1]],
        top[part[1]] - 14, part[1] >chart
      for (v = 0; v <= 40; v += 10) {
        y = top[part[1]] + 140 - v * 3.5
        printf "<line x1=\"%d\" x2=\"%d\" y1=\"%.1f\" y2=\"%.1f\" stroke=\"#dddddd\"/>" \
               "<text x=\"%d\" y=\"%.1f\" text-anchor=\"end\">%d</text>\n", left[part[1]],
          left[part[1]] + 135, y, y, left[part[1]] - 4, y + 4, v >chart
      }
      for (v = 2; v <= 5; ++v) {
        printf "<text x=\"%d\" y=\"%d\" text-anchor=\"middle\">%s</text>\n",
          left[part[1]] + (v - 2) * 45, top[part[1]] + 154, substr("100 1k  10k 100k", 4 * v - 7, 4) >chart
      }
    }
  }
  for (shape in panel) {
    for (contestant = 1; contestant <= 3; ++contestant) {
      line = ""
      for (i = 1; i <= count; ++i) {
        split(documents[i], part, " ")
        v = time[documents[i], names[contestant]]
        if (part[1] == shape && v > 0) {
          x = left[shape] + (log(part[2]) / log(10) - 2) * 45
          y = v * 1000 / bytes[documents[i]]
          line = line sprintf(" %.1f,%.1f", x, top[shape] + 140 - (y > 42 ? 42 : y) * 3.5)
        }
      }
      printf "<polyline points=\"%s\" fill=\"none\" stroke=\"%s\" stroke-width=\"2\"/>\n",
        substr(line, 2), colours[names[contestant]] >chart
    }
  }
  printf "<text x=\"590\" y=\"300\">ns of processor time a byte,</text>" \
         "<text x=\"590\" y=\"314\">over the number of children;</text>" \
         "<text x=\"590\" y=\"328\">what lies above 42 is cut off</text>\n" >chart
  for (i = 1; i <= 3; ++i) {
    printf "<line x1=\"590\" x2=\"620\" y1=\"%d\" y2=\"%d\" stroke=\"%s\" stroke-width=\"2\"/>" \
           "<text x=\"628\" y=\"%d\">%s</text>\n", 334 + i * 16, 334 + i * 16, colours[names[i]],
      338 + i * 16, names[i] == "hand" ? "by hand" : names[i] == "bare" ? "bare libxml2" : "ours" >chart
  }
  print "</svg>" >chart
}
