#!/bin/bash
# A CUPS daemon for tests, in the folder $1 and behind the socket there. Says "ready" and runs until it is told to end. A
# queue at "tofile:PATH" prints into that file.
set -euo pipefail
here=$1
PATH=$PATH:/usr/sbin
command -v lpadmin >/dev/null
# The daemon's helpers may belong to another user.
chmod 755 "$here"
mkdir -p "$here"/{spool/tmp,cache,state,log,bin/backend,out}
chmod 777 "$here/out"
ln -s /usr/lib/cups/{filter,daemon} "$here/bin/"
cat >"$here/bin/backend/tofile" <<'END'
#!/bin/sh
[ $# -gt 0 ] || exit 0
out=${DEVICE_URI#tofile:}
cat ${6:--} > $out.part && mv $out.part $out
END
chmod 755 "$here/bin/backend/tofile"
cat >"$here/files.conf" <<END
ServerRoot $here
ServerBin $here/bin
RequestRoot $here/spool
TempDir $here/spool/tmp
CacheDir $here/cache
StateDir $here/state
AccessLog $here/log/access
ErrorLog $here/log/error
PageLog $here/log/page
Sandboxing relaxed
END
cat >"$here/cupsd.conf" <<END
Listen $here/socket
Browsing Off
WebInterface No
DefaultAuthType None
DirtyCleanInterval 0
<Policy default>
<Limit All>
Allow all
</Limit>
</Policy>
END
cupsd -f -c "$here/cupsd.conf" -s "$here/files.conf" &
daemon=$!
trap 'kill $daemon; wait $daemon; exit' TERM
for ((i = 0; i < 400; ++i)); do
    CUPS_SERVER=$here/socket LC_ALL=C lpstat -r 2>/dev/null | grep -q 'is running' && break
    kill -0 $daemon
    sleep 0.05
done
echo ready
wait $daemon
