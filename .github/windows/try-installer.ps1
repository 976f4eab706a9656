# Installs the program as a user does, backs up a list, and removes the program. Fails when a step
# does, when files or registry values of the program stay behind, or when the copies went with it.
#
# -Packages  the folder with the installer
param([Parameter(Mandatory)] [string] $Packages)
$ErrorActionPreference = 'Stop'

function Invoke-Installer([string] $action, [string] $package) {
    $process = Start-Process msiexec -ArgumentList "$action `"$package`" /qn /norestart" -Wait -PassThru
    if ($process.ExitCode -ne 0) { throw "msiexec $action ended with $($process.ExitCode)" }
}

$package = (Get-ChildItem $Packages -Filter 'Vaultwright-*-x64.msi')[0].FullName
$product = 'HKCU:\Software\Microsoft\Windows\CurrentVersion\Uninstall'

Invoke-Installer '/i' $package
$installed = Get-ChildItem $env:LOCALAPPDATA -Recurse -Filter Vaultwright.exe |
    Select-Object -First 1
if (-not $installed) { throw 'The program is not installed' }
$folder = $installed.DirectoryName

$work = Join-Path $env:TEMP "vaultwright-$PID"
New-Item -ItemType Directory (Join-Path $work 'Documents') | Out-Null
New-Item -ItemType Directory (Join-Path $work 'Copies') | Out-Null
'A letter.' | Set-Content (Join-Path $work 'Documents\Letter.txt')
$list = Join-Path $work 'Trial.vwl'
@("BackupTo: $work\Copies", 'Backages: 3', "$work\Documents") | Set-Content -Encoding ascii $list

$run = Start-Process $installed.FullName -ArgumentList "/B `"$list`"" -Wait -PassThru
if ($run.ExitCode -ne 0) { throw "The backup ended with $($run.ExitCode)" }
if (-not (Get-ChildItem "$work\Copies" -Recurse -Filter Letter.txt)) { throw 'There is no copy' }

& (Join-Path $folder 'vw.exe') check $list
if ($LASTEXITCODE -ne 0) { throw "The check ended with $LASTEXITCODE" }

Invoke-Installer '/x' $package
if (Test-Path $installed.FullName) { throw 'The program is still there' }
if (Get-ChildItem $product -ErrorAction SilentlyContinue |
        Where-Object { $_.GetValue('DisplayName') -eq 'Vaultwright' }) {
    throw 'The list of installed programs still names it'
}
if (-not (Get-ChildItem "$work\Copies" -Recurse -Filter Letter.txt)) { throw 'The copies are gone' }
Remove-Item -Recurse $work
'Installed, backed up, checked, removed.'
