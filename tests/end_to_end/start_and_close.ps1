# Starts the program on Windows, waits for its window, closes it, and ends with the program's exit code.
param([Parameter(Mandatory)] [string] $Program)
$ErrorActionPreference = 'Stop'

$file = Resolve-Path $Program
$process = Start-Process -FilePath $file -WorkingDirectory (Split-Path $file) -PassThru
$null = $process.Handle  # without it the exit code is not kept
for ($i = 0; $i -lt 300 -and -not $process.HasExited -and -not $process.MainWindowTitle; $i++) {
    Start-Sleep -Milliseconds 100
    $process.Refresh()
}
if ($process.HasExited) { throw "It ended with $($process.ExitCode) before it had a window." }
if ($process.MainWindowTitle -ne 'ZelEngine - Projects') {
    $process.Kill()
    throw "After 30 seconds the title is '$($process.MainWindowTitle)'."
}

$null = $process.CloseMainWindow()
if (-not $process.WaitForExit(10000)) {
    $process.Kill()
    throw 'It did not end within 10 seconds.'
}
exit $process.ExitCode
