#!/usr/bin/env bash
# Two contaminant plumes in a known flow field: advection and dispersion from their sources.
#
# Usage: [TD=PROGRAM] bash plume.sh FOLDER
source "$(dirname "$0")/common.bash"

new_model plume "Contaminant plumes in a prescribed flow field"

# 400 m along the flow, 200 m across, three layers of 4 m.
columns=($(equal 80 5))
rows=($(equal 40 5))
all="1 2 3"
td grid set "$model" --layers 3 --columns 80 --column-size 5 --rows 40 --row-size 5 --finish
td layers set "$model" --geometry thickness --thickness all=4

# An old river channel runs through the valley sands; below it the sands are finer.
channel=$(rectangle 0 80 400 140)
define 1403 "$all" 1
zone 1403 "1 2" 2 "$channel"

td type set "$model" --flow 1 --flow-type prescribed --heat 0 --transport 1 --transport-scheme S
td coupling set "$model" --density 0
td info-results set "$model" --level 2 --protocol 1 --plt3d 1 --vtk 1 \
    --gnuplot 0 --tecplot 0 --tecplot2 0 --thermal 0
td rock set "$model" --zones 2 --compressibility 1.0E-10 \
    --porosity 1=0.25 --permeability 1=2E-12 --porosity 2=0.30 --permeability 2=1E-11

# Flow velocity [m/s]: to the east, three times as fast in the channel, with a slow drift to the north
# that is the same everywhere. Such a field neither loses nor gains water.
define 1408 "$all" 5E-7
zone 1408 "1 2" 1.5E-6 "$channel"
define 1409 "$all" 4E-8
define 1410 1 0

# Sources: tracer 1 leaks from a tank near the channel, tracer 2 was spilt farther east and lies on
# the two upper layers. The tank goes on leaking: its concentration is fixed, as is that of the clean
# water which enters in the west and in the south.
tank=$(rectangle 40 90 60 105)
spill=$(ellipse 140 60 15 15)
define 1406 "1 2" 0
zone 1406 1 1 "$tank"
zone 1406 "1 2" 2 "$spill"
define 40 "$all" "i == 1 || j == ny ? -1 : 1"
zone 40 1 -1 "$tank"
td tracer set "$model" --tracer 1 --active 1 --concentration 5.5 --betac 0 \
    --tracer 2 --active 1 --concentration 0.8 --betac 0
td dispersion set "$model" --diffusion 0.1 --longitudinal 5.0 --transverse 0.5

# Five years.
td periods set "$model" --unit 4 --flow steady \
    --period 1 --use 1 --length 1825 --steps 365 --monitoring 5 --max-transport 10000
td points set "$model" 1 --name TANK --active 1 --x 52 --y 97 --layer 1
td points set "$model" 2 --name FENCE_N --active 1 --x 200 --y 110 --layer 1
td points set "$model" 3 --name FENCE_S --active 1 --x 200 --y 60 --layer 2
td points set "$model" 4 --name OLD --active 0 --x 300 --y 60 --layer 2
td points set "$model" 5 --name FENCE_E --active 1 --x 390 --y 120 --layer 1

td solver set "$model" bicgstab --om-transport 5 --precond-transport 2 --term-transport 1
td check "$model"
