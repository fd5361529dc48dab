#!/usr/bin/env bash
# A farm of two nodes on this one machine: a sweep is sent to it, one node dies half-way with all that
# runs on it, what is missing is sent again, and the result is compared with a sweep without a farm.
# Shows what a real farm needs, and tests that it works. Needs Debian's slurm-wlm and munge; ends with
# 77 without them. All lies in a folder of its own, and all daemons end with it.
#   one_machine.sh [RIGWRIGHT [SCENE VARY [ROWS OF A TASK]]]
set -euo pipefail
rigwright=$(realpath "${1:-build/release/bin/rigwright}")
scene=${2:-}
vary=${3:-Cam:Translation Response Factor=1:80:200}
chunk=${4:-50}
examples=$(realpath "$(dirname "$0")/..")
for command in slurmctld slurmd sbatch squeue scontrol sinfo munged; do
  if ! command -v "$command" >/dev/null; then
    echo "SKIPPED: $command is not there (apt-get install slurm-wlm munge)"
    exit 77
  fi
done

work=$(mktemp -d)
chmod 711 "$work"
mkdir "$work/state" "$work/spool" "$work/log"
mkdir -m 711 "$work/munge"
port=$((17000 + $$ % 20000))
host=$(hostname -s)
first=one$$a second=one$$b  # no other farm's
head -c 1024 /dev/urandom >"$work/munge/key"
chmod 600 "$work/munge/key"
cat >"$work/slurm.conf" <<END
ClusterName=one
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$port
CommunicationParameters=NoInAddrAny,NoCtldInAddrAny
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
AuthType=auth/munge
AuthInfo=socket=$work/munge/socket
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool/%n
SlurmctldPidFile=$work/controller.pid
SlurmdPidFile=$work/%n.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerType=sched/builtin
SchedulerParameters=sched_min_interval=100000,batch_sched_delay=0
ReturnToService=2
SlurmdTimeout=5
KillWait=2
MpiDefault=none
NodeName=$first NodeHostname=$host NodeAddr=127.0.0.1 Port=$((port + 1)) CPUs=1
NodeName=$second NodeHostname=$host NodeAddr=127.0.0.1 Port=$((port + 2)) CPUs=1
PartitionName=all Nodes=$first,$second Default=YES State=UP
END
export SLURM_CONF=$work/slurm.conf

daemons=()
stop() {
  scancel --user="$(id -un)" 2>/dev/null || true
  for ((i = 0; i < 50; ++i)); do
    [ -z "$(squeue -h 2>/dev/null)" ] && break
    sleep 0.1
  done
  for ((i = ${#daemons[@]} - 1; i >= 0; --i)); do
    kill "${daemons[i]}" 2>/dev/null || true
    wait "${daemons[i]}" 2>/dev/null || true
  done
  rm -rf "$work"
}
trap stop EXIT
# until_true SECONDS WHAT COMMAND...
until_true() {
  local most=$1 what=$2
  shift 2
  for ((i = 0; i < most * 5; ++i)); do
    "$@" && return
    sleep 0.2
  done
  echo "one_machine.sh: $what in $most s" >&2
  tail -n 5 "$work"/log/* >&2 || true
  exit 1
}
munged -F --key-file="$work/munge/key" --socket="$work/munge/socket" --pid-file="$work/munge/pid" \
  --log-file="$work/munge/log" --seed-file="$work/munge/seed" 2>"$work/log/munged" &
daemons+=($!)
until_true 10 "munged does not answer" test -S "$work/munge/socket"
slurmctld -D -i -c >"$work/log/controller" 2>&1 &
daemons+=($!)
controller_is_up() { scontrol ping 2>/dev/null | grep -q UP; }
until_true 30 "the controller does not answer" controller_is_up
# node NAME
node() { setsid slurmd -D -N "$1" >>"$work/log/$1" 2>&1 & }
node $first
daemons+=($!)
node $second
doomed=$!
daemons+=("$doomed")
nodes_are_idle() { [ "$(sinfo -h -o %T -N | sort -u)" = idle ]; }
until_true 30 "the nodes do not come up" nodes_are_idle

if [ -z "$scene" ]; then  # a camera that follows a shaky object
  scene=$work/scene.glb
  python3 "$examples/make_shaky.py" "$scene"
  "$rigwright" -q add "$scene" MotionFilterCam --name Cam -o "$scene" >/dev/null
  "$rigwright" -q parent "$scene" Cam_AttachedCam Carrier -o "$scene"
fi
"$rigwright" -q sweep "$scene" --vary "$vary" -o "$work/here"
"$rigwright" -q sweep "$scene" --vary "$vary" -o "$work/farm" --slurm --chunk "$chunk"
rows() { find "$work/farm/rows" -name '*.json' | wc -l; }
all=$(find "$work/here/rows" -name '*.json' | wc -l)
second_works() { [ -n "$(squeue -h -w "$second" -t R)" ] && [ "$(rows)" -gt 0 ]; }
until_true 120 "the farm does not work" second_works
# The second node dies whole: its daemon, and every program that it has started.
dying=$({ grep -lz "^SLURMD_NODENAME=$second\$" /proc/[0-9]*/environ 2>/dev/null || true; } | cut -d/ -f3)
kill -9 "$doomed"
wait "$doomed" 2>/dev/null || true
for process in $dying; do
  above=$(ps -o ppid= -p "$process" | tr -d ' ' || true)
  if [ -n "$above" ] && grep -qs slurmstepd "/proc/$above/comm"; then kill -9 "$above" || true; fi
  kill -9 "$process" 2>/dev/null || true
done
echo "one node died with $(rows) of $all rows there"
queue_is_empty() { [ -z "$(squeue -h)" ]; }
until_true 120 "the queue does not empty" queue_is_empty
echo "the other one left $(rows) of $all rows"

node $second
daemons+=($!)
until_true 30 "the node does not come back" nodes_are_idle
if [ "$(rows)" -lt "$all" ]; then
  if "$rigwright" -q sweep collect "$work/farm"; then
    echo "one_machine.sh: missing rows were not told" >&2
    exit 1
  fi
  "$rigwright" -q sweep collect "$work/farm" --retry --chunk "$chunk"
  until_true 120 "the queue does not empty" queue_is_empty
fi
"$rigwright" -q sweep collect "$work/farm"
rm -r "$work/farm/slurm"
diff -r "$work/here" "$work/farm"
echo "all $all rows are there, equal to those without a farm"
