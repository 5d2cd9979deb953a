# Draws what a cold load costs at each size: gnuplot -e "data='...'; picture='...'" cost.gp
set terminal svg size 860,560 font "sans-serif,13" background "white"
set output picture
set logscale xy
set xlabel "parameters in the document"
set ylabel "processor time of the process, milliseconds"
set format x "%.0f"
set key top left
set grid
set datafile missing "?"
columns = int(system("awk 'NR == 2 { print NF }' " . data))
plot for [i = 2:columns] data using 1:(column(i) / 1000) with linespoints \
  linewidth (i == 2 ? 3 : 1) title columnheader(i)
