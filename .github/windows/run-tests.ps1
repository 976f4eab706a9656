# Runs every test program of a build folder and compares what failed with the list of known
# differences beside this file. Exit code 0 when only listed cases failed.
#
# -Build    the build folder: bin and tests below it
# -Reports  where the XML reports are put
param(
    [Parameter(Mandatory)] [string] $Build,
    [Parameter(Mandatory)] [string] $Reports
)
$ErrorActionPreference = 'Stop'

$build = (Resolve-Path $Build).Path
New-Item -ItemType Directory -Force $Reports | Out-Null
$reports = (Resolve-Path $Reports).Path
$env:VW_PROGRAM = Join-Path $build 'bin\Vaultwright.exe'
$env:VW_CONSOLE = Join-Path $build 'bin\vw.exe'

$known = Get-Content (Join-Path $PSScriptRoot 'known-differences.txt') |
    Where-Object { $_ -and -not $_.StartsWith('#') } |
    ForEach-Object { ($_ -split '\s+', 2)[0] }

$minutes = 20
$unexpected = @()
foreach ($program in Get-ChildItem (Join-Path $build 'tests') -Filter '*_tests.exe') {
    $name = $program.BaseName
    $report = Join-Path $reports "$name.xml"
    $start = @{
        FilePath = $program.FullName
        ArgumentList = "--gtest_brief=1 --gtest_output=`"xml:$report`""
        WorkingDirectory = $build
        PassThru = $true
        NoNewWindow = $true
        RedirectStandardOutput = Join-Path $reports "$name.txt"
    }
    $process = Start-Process @start
    if (-not $process.WaitForExit($minutes * 60 * 1000)) {
        $process.Kill($true)
        $unexpected += "$name did not end within $minutes minutes"
        continue
    }
    if (-not (Test-Path $report)) {
        $unexpected += "$name ended with exit code $($process.ExitCode) and left no report"
        continue
    }
    $suites = ([xml](Get-Content -Raw $report)).testsuites
    $failed = $suites.SelectNodes('//testcase[failure]') |
        ForEach-Object { "$($_.classname).$($_.name)" }
    $new = @($failed | Where-Object { $_ -notin $known })
    "{0}: {1} cases, {2} failed, {3} of them known" -f $name, $suites.tests, @($failed).Count,
        (@($failed).Count - $new.Count)
    $unexpected += $new
}

if ($unexpected.Count -gt 0) {
    "Failed without being listed as a known difference:"
    $unexpected | ForEach-Object { "    $_" }
    exit 1
}
